/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** While postings are loaded, the list can be used. */
#include <velkor/zox_eventlist.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <velkor/zox_events_parse.h>
#include <velkor/zox_file.h>

#include "core/job.h"
#include "support/descriptor.h"
#include "tests/support/log_capture.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor {
namespace {

using test::basic_event;
using test::describe;
using test::document_of;
using test::posting_element;

class ZoxEventlistLoad : public test::EventlistTest {
protected:
  [[nodiscard]] ZOXEventObject *object_of(gint32 postId) const {
    return find_object(list->tree, postId);
  }

  /** A pipe in place of the cache file: a load waits for what it says. */
  void put_pipe_in_place_of_the_file() {
    const std::filesystem::path path = cache_file("velkor.posts.gz");
    std::filesystem::create_directories(path.parent_path());
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  }
  [[nodiscard]] Descriptor open_pipe() const {
    // Waits until the load has opened its end.
    return Descriptor(open(cache_file("velkor.posts.gz").c_str(), O_WRONLY | O_CLOEXEC));
  }
  /** Sends the whole file, and waits until the load has it: it opens the pipe more than once. */
  static void send(const Descriptor &pipe, const std::string &document) {
    EXPECT_EQ(write(pipe.get(), document.data(), document.size()),
              static_cast<ssize_t>(document.size()));
    int left = 1;
    while (left > 0 && ioctl(pipe.get(), FIONREAD, &left) == 0)
      std::this_thread::yield();
  }
};

TEST_F(ZoxEventlistLoad, LetsOthersReadAndChangeTheList) {
  add(basic_event(1));
  add(basic_event(2));
  put_pipe_in_place_of_the_file();
  ZoxErrorCode code = 99;
  std::thread loader([&] { code = zox_eventlist_load(list, nullptr); });
  {
    const Descriptor pipe = open_pipe();
    EXPECT_EQ(held(1), describe(*basic_event(1)));
    EXPECT_EQ(zox_eventlist_get_count(list, 0), 2U);
    add(basic_event(2, "anders"));
    add(basic_event(3));
    send(pipe, document_of({posting_element(7, "<Title>zeven</Title>")}));
  }
  loader.join();
  EXPECT_EQ(code, ZOX_RESULT_SUCCESS);
  // What came in meanwhile came after the load.
  EXPECT_THAT(test::ids(list), testing::ElementsAre(2, 3, 7));
  EXPECT_EQ(held(2), describe(*basic_event(2, "anders")));
}

TEST_F(ZoxEventlistLoad, WhatLeavesMeanwhileStaysAway) {
  add(test::event_in_state(7, ZOX_STATUS_REMOVED, 0));
  put_pipe_in_place_of_the_file();
  std::thread loader([&] { zox_eventlist_load(list, nullptr); });
  {
    const Descriptor pipe = open_pipe();
    zox_eventlist_purge_deleted(list);
    send(pipe, document_of({posting_element(7), posting_element(8)}));
  }
  loader.join();
  EXPECT_THAT(test::ids(list), testing::ElementsAre(8));
}

TEST_F(ZoxEventlistLoad, KeepsObjectsThatNobodyCanTellFromNewOnes) {
  add(basic_event(1));
  add(basic_event(2));
  const OwnedEvent detailed = basic_event(3);
  detailed->ann = g_string_new("a");
  add(OwnedEvent(zox_event_duplicate(detailed.get())));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  ZOXEventObject *first = object_of(1);
  const OwnedEventObject second(static_cast<ZOXEventObject *>(g_object_ref(object_of(2))));
  ASSERT_EQ(zox_eventlist_load(list, nullptr), ZOX_RESULT_SUCCESS);
  EXPECT_EQ(object_of(1), first);
  EXPECT_NE(object_of(2), second.get());
  EXPECT_EQ(held(2), describe(*basic_event(2)));
  EXPECT_EQ(held(3), describe(*basic_event(3)));
}

TEST_F(ZoxEventlistLoad, ACancelledSaveLeavesTheFile) {
  add(basic_event(1));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  const std::string before = test::read_file(cache_file("velkor.posts.gz"));
  add(basic_event(2));
  const test::LogCapture log;
  Job job;
  job.cancel();
  {
    const WorkFor scope(&job);
    EXPECT_EQ(zox_eventlist_save(list), 0);
    EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
  }
  EXPECT_EQ(test::read_file(cache_file("velkor.posts.gz")), before);
  EXPECT_THAT(log.warnings(), testing::IsEmpty());
  EXPECT_EQ(zox_eventlist_save(list), 1);
}

TEST_F(ZoxEventlistLoad, ACancelledJobReadsNoDump) {
  const OwnedString dump = test::zox(document_of({posting_element(7), posting_element(8)}));
  Job job;
  job.cancel();
  const WorkFor scope(&job);
  GSList *objects = nullptr;
  EXPECT_EQ(zox_events_parse(dump.get(), nullptr, &objects, nullptr, 0), ZOX_RESULT_NOT_PARSED);
  EXPECT_EQ(objects, nullptr);
}

TEST_F(ZoxEventlistLoad, ACancelledJobStillReadsTheCacheFile) {
  add(basic_event(1));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  Job job;
  job.cancel();
  const WorkFor scope(&job);
  EXPECT_EQ(zox_eventlist_load(list, nullptr), ZOX_RESULT_SUCCESS);
  EXPECT_THAT(test::ids(list), testing::ElementsAre(1));
}

}  // namespace
}  // namespace velkor
