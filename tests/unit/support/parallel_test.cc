/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/parallel.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(Tickets, AreEachHandedOutOnce) {
  Tickets tickets(3);
  EXPECT_EQ(tickets.next(), 0U);
  EXPECT_EQ(tickets.next(), 1U);
  EXPECT_EQ(tickets.next(), 2U);
  EXPECT_EQ(tickets.next(), std::nullopt);
}

TEST(Tickets, EndWhenStopped) {
  Tickets tickets(3);
  tickets.next();
  tickets.stop();
  EXPECT_EQ(tickets.next(), std::nullopt);
}

TEST(RunOnThreads, CallsTheWorkOnEachThread) {
  std::mutex mutex;
  std::set<std::thread::id> threads;
  run_on_threads(3, [&] {
    const std::lock_guard lock(mutex);
    threads.insert(std::this_thread::get_id());
  });
  EXPECT_EQ(threads.size(), 3U);
  EXPECT_TRUE(threads.contains(std::this_thread::get_id()));
}

TEST(RunOnThreads, NeedsNoOtherThreadForOne) {
  std::thread::id thread;
  run_on_threads(1, [&] { thread = std::this_thread::get_id(); });
  EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST(ShareOut, DoesEveryPieceOnce) {
  std::vector<std::atomic<int>> done(1000);
  EXPECT_TRUE(share_out(done.size(), [&done] {
    return [&done](std::size_t number) {
      ++done[number];
      return true;
    };
  }));
  for (const std::atomic<int> &count : done)
    EXPECT_EQ(count, 1);
}

TEST(ShareOut, TellsThatAPieceFailedAndBeginsNoMore) {
  std::atomic<std::size_t> begun = 0;
  EXPECT_FALSE(share_out(1000, [&begun] {
    return [&begun](std::size_t) {
      ++begun;
      return false;
    };
  }));
  EXPECT_LE(begun, threads_for(1000));
}

TEST(ShareOut, GivesEachThreadAWorkerOfItsOwn) {
  std::atomic<std::size_t> workers = 0;
  EXPECT_TRUE(share_out(1000, [&workers] {
    ++workers;
    return [thread = std::this_thread::get_id()](std::size_t) {
      return thread == std::this_thread::get_id();
    };
  }));
  EXPECT_EQ(workers, threads_for(1000));
}

TEST(ShareOut, OfNothingGoesWell) {
  EXPECT_TRUE(share_out(0, [] { return [](std::size_t) { return false; }; }));
}

}  // namespace
}  // namespace velkor
