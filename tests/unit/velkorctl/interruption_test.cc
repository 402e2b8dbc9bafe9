/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/interruption.h"

#include <csignal>
#include <cstdlib>

#include <gtest/gtest.h>

namespace velkor::ctl {
namespace {

using InterruptionDeathTest = testing::TestWithParam<int>;

/** Ends with 0 when the signal is noticed and does not end the process. */
[[noreturn]] void raise_during_interruption(int number) {
  std::signal(number, SIG_DFL);
  const Interruption interruption;
  const bool before = Interruption::requested();
  std::raise(number);
  std::_Exit(!before && Interruption::requested() ? 0 : 1);
}

TEST_P(InterruptionDeathTest, NoticesTheSignal) {
  EXPECT_EXIT(raise_during_interruption(GetParam()), testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Each, InterruptionDeathTest, testing::Values(SIGINT, SIGTERM, SIGHUP));

/** Ends with 0 when the second signal does not end the process. */
[[noreturn]] void raise_twice(int first, int second) {
  std::signal(SIGHUP, SIG_DFL);
  const Interruption interruption;
  std::raise(first);
  std::raise(second);
  std::_Exit(0);
}

TEST(InterruptionDeathTestOfTwo, TheSecondEndsTheProcessAtOnce) {
  EXPECT_EXIT(raise_twice(SIGINT, SIGINT), testing::ExitedWithCode(130), "");
  EXPECT_EXIT(raise_twice(SIGHUP, SIGTERM), testing::ExitedWithCode(130), "");
}

TEST(InterruptionDeathTestOfTwo, AHangupMayComeTwice) {
  EXPECT_EXIT(raise_twice(SIGHUP, SIGHUP), testing::ExitedWithCode(0), "");
}

/** Ends with 0 when a SIGHUP that was ignored before is still. */
[[noreturn]] void hang_up_under_nohup() {
  std::signal(SIGHUP, SIG_IGN);
  const Interruption interruption;
  std::raise(SIGHUP);
  std::_Exit(!Interruption::requested() && !Interruption::ends_on_hangup() ? 0 : 1);
}

TEST(InterruptionDeathTestOfNohup, LeavesAnIgnoredHangupIgnored) {
  EXPECT_EXIT(hang_up_under_nohup(), testing::ExitedWithCode(0), "");
}

TEST(Interruption, RestoresWhatTheSignalsDidBefore) {
  const auto earlier = std::signal(SIGHUP, SIG_DFL);
  { const Interruption interruption; }
  EXPECT_EQ(std::signal(SIGHUP, earlier), SIG_DFL);
}

}  // namespace
}  // namespace velkor::ctl
