/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/view_maker.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/velkor/snapshots.h"

namespace velkor::app {
namespace {

using ::testing::ElementsAre;

/** Collects what a maker delivers; by wish it holds the maker back at the first view. */
class Receiver {
public:
  void take(const SharedView &view) {
    std::unique_lock guard(lock_);
    views_.push_back(view);
    changed_.notify_all();
    changed_.wait(guard, [this] { return !held_; });
  }
  void hold() {
    const std::lock_guard guard(lock_);
    held_ = true;
  }
  void release() {
    const std::lock_guard guard(lock_);
    held_ = false;
    changed_.notify_all();
  }
  std::vector<SharedView> wait_for(std::size_t count) {
    std::unique_lock guard(lock_);
    changed_.wait_for(guard, std::chrono::seconds(60), [&] { return views_.size() >= count; });
    return views_;
  }

private:
  std::mutex lock_;
  std::condition_variable changed_;
  bool held_ = false;
  std::vector<SharedView> views_;
};

TEST(ViewMaker, DeliversWhatWasAskedFor) {
  Receiver receiver;
  ViewMaker maker([&](const SharedView &view) { receiver.take(view); });
  const SharedSnapshot snapshot = snapshot_of({{.id = 1, .title = "a"}, {.id = 2, .title = "b"}});
  const std::uint64_t number = maker.request(snapshot, {.text = "b"});
  const std::vector<SharedView> views = receiver.wait_for(1);
  ASSERT_EQ(views.size(), 1U);
  EXPECT_EQ(views[0]->snapshot, snapshot);
  EXPECT_EQ(views[0]->query, SpotQuery{.text = "b"});
  EXPECT_EQ(views[0]->request, number);
  EXPECT_THAT(ids_of(*snapshot, views[0]->rows), ElementsAre(2));
}

TEST(ViewMaker, OfWhatWaitsOnlyTheLatestCounts) {
  Receiver receiver;
  receiver.hold();
  ViewMaker maker([&](const SharedView &view) { receiver.take(view); });
  const SharedSnapshot snapshot = snapshot_of({{.id = 1}});
  const std::uint64_t first = maker.request(snapshot, {});
  ASSERT_EQ(receiver.wait_for(1).size(), 1U);
  maker.request(snapshot, {.text = "x"});
  const std::uint64_t last = maker.request(snapshot, {.text = "xy"});
  receiver.release();
  const std::vector<SharedView> views = receiver.wait_for(2);
  ASSERT_EQ(views.size(), 2U);
  EXPECT_EQ(views[0]->request, first);
  EXPECT_EQ(views[1]->request, last);
}

TEST(ViewMaker, AnotherSnapshotHasItsOwnOrder) {
  Receiver receiver;
  ViewMaker maker([&](const SharedView &view) { receiver.take(view); });
  const SharedSnapshot one = snapshot_of({{.id = 1, .stamp = 5}, {.id = 2, .stamp = 9}});
  const SharedSnapshot other = snapshot_of({{.id = 1, .stamp = 9}, {.id = 2, .stamp = 5}});
  maker.request(one, {});
  receiver.wait_for(1);
  maker.request(other, {});
  const std::vector<SharedView> views = receiver.wait_for(2);
  ASSERT_EQ(views.size(), 2U);
  EXPECT_THAT(ids_of(*one, views[0]->rows), ElementsAre(2, 1));
  EXPECT_THAT(ids_of(*other, views[1]->rows), ElementsAre(1, 2));
}

}  // namespace
}  // namespace velkor::app
