/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/callbacks.h"

#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace velkor {
namespace {

gint count_call(gpointer count) {
  ++*static_cast<std::atomic<int> *>(count);
  return 0;
}

class MailHookTest : public testing::Test {
protected:
  MailHookTest() { hook.set(count_call, &calls); }

  std::atomic<int> calls{0};
  MailHook hook;
};

TEST_F(MailHookTest, RunsAtFirstAndThenAfterMoreThan300Seconds) {
  hook.run_if_due(1000);
  EXPECT_EQ(calls, 1);
  hook.run_if_due(1300);
  EXPECT_EQ(calls, 1);
  hook.run_if_due(1301);
  EXPECT_EQ(calls, 2);
}

TEST_F(MailHookTest, IsNotDueBeforeTheClockHasCaughtUp) {
  hook.run_if_due(1000);
  hook.run_if_due(500);
  EXPECT_EQ(calls, 1);
}

TEST_F(MailHookTest, CountsTheTimeEvenWhenNoneIsInstalled) {
  hook.set(nullptr, nullptr);
  hook.run_if_due(1000);
  hook.set(count_call, &calls);
  hook.run_if_due(1100);
  EXPECT_EQ(calls, 0);
}

TEST_F(MailHookTest, RunsOnceWhenThreadsRace) {
  for (gint64 now = 1000; now < 100000; now += 1000) {
    calls = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
      threads.emplace_back([&] { hook.run_if_due(now); });
    for (std::thread &thread : threads)
      thread.join();
    ASSERT_EQ(calls, 1);
  }
}

}  // namespace
}  // namespace velkor
