/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One event list under several threads; the thread sanitizer makes most of these. */
#include <atomic>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "store/filter_pass.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor {
namespace {

using test::basic_event;
using test::describe;

class ZoxEventlistThreads : public test::EventlistTest {
protected:
  ZoxEventlistThreads() {
    for (gint32 id = 1; id <= 40; ++id)
      add(basic_event(id));
  }

  /** Runs each of them over and over, all at the same time. */
  static void run_together(const std::vector<std::function<void(int round)>> &works) {
    std::vector<std::thread> threads;
    for (const auto &work : works) {
      threads.emplace_back([&work] {
        for (int round = 0; round < 60; ++round)
          work(round);
      });
    }
    for (std::thread &thread : threads)
      thread.join();
  }

  /** Whether the list holds the posting in one of the two forms that the tests give it. */
  bool is_whole(gint32 postId) {
    const OwnedEvent event(zox_eventlist_lookup_id(list, postId));
    return event && (describe(*event) == describe(*basic_event(postId)) ||
                     describe(*event) == describe(*basic_event(postId, "anders")));
  }
};

TEST_F(ZoxEventlistThreads, LookupsReplacementsAndMergesTakeTurns) {
  std::atomic<int> broken = 0;
  run_together({
      [&](int round) { broken += is_whole(round % 40 + 1) ? 0 : 1; },
      [&](int round) { broken += is_whole(round % 40 + 1) ? 0 : 1; },
      [&](int round) { add(basic_event(round % 40 + 1, "anders")); },
      [&](int round) {
        test::merge(list,
                    {basic_event(round % 40 + 1, "anders").get(), basic_event(round + 1000).get()});
      },
  });
  EXPECT_EQ(broken, 0);
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 100U);
}

TEST_F(ZoxEventlistThreads, SavesAndWalksRunBesideReplacements) {
  std::atomic<int> broken = 0;
  run_together({
      [&](int round) {
        if (round % 10 == 0)
          broken += zox_eventlist_save(list) == 1 ? 0 : 1;
      },
      [&](int round) {
        if (round % 10 == 0)
          broken += zox_eventlist_save(list) == 1 ? 0 : 1;
      },
      [&](int) { broken += test::ids(list).size() == 40 ? 0 : 1; },
      [&](int round) { add(basic_event(round % 40 + 1, "anders")); },
  });
  EXPECT_EQ(broken, 0);
  EXPECT_EQ(zox_eventlist_load(list, nullptr), 0U);
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 40U);
}

TEST_F(ZoxEventlistThreads, FilterPassesRunBesideReaders) {
  const OwnedFilter filter = test::filter_of(0);
  std::atomic<int> broken = 0;
  run_together({
      [&](int round) {
        if (round % 5 == 0)
          filter_entries(list, *filter);
      },
      [&](int round) { broken += is_whole(round % 40 + 1) ? 0 : 1; },
      [&](int) {
        const std::size_t found = test::ids(list, 1).size();
        broken += found == 0 || found == 40 ? 0 : 1;
        const OwnedFilter active(zox_eventlist_get_filter(list));
        broken += !active || active->cat == 0 ? 0 : 1;
        const OwnedEvent first(zox_eventlist_get_first_filtered_event(list));
      },
  });
  EXPECT_EQ(broken, 0);
  EXPECT_EQ(zox_eventlist_get_count(list, 1), 40U);
}

TEST_F(ZoxEventlistThreads, CallbacksLookThingsUpWhileWritersWait) {
  std::atomic<int> found = 0;
  run_together({
      [&](int) {
        zox_eventlist_foreach(
            list, 0, 1,
            [](gpointer key, ZoxEvent *, gpointer count) {
              const OwnedEvent event(
                  zox_eventlist_lookup_id(core->eventlist, GPOINTER_TO_INT(key)));
              *static_cast<std::atomic<int> *>(count) += event ? 1 : 0;
              return 0;
            },
            &found);
      },
      [&](int round) { add(basic_event(round % 40 + 1, "anders")); },
      [&](int round) { add(basic_event(round % 40 + 1, "anders")); },
  });
  EXPECT_EQ(found, 60 * 40);
}

}  // namespace
}  // namespace velkor
