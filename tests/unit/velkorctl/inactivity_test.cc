/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/inactivity.h"

#include <gtest/gtest.h>

namespace velkor::ctl {
namespace {

using std::chrono::seconds;

class InactivityTest : public testing::Test {
protected:
  /** Whether the limit is exceeded after the transfer has stood at `received` for that long. */
  bool stays(std::int64_t received, int for_seconds) {
    bool exceeded = false;
    for (int second = 0; second <= for_seconds; ++second)
      exceeded = inactivity.exceeded(received, now += seconds(1));
    return exceeded;
  }

  Inactivity inactivity{seconds(60)};
  Inactivity::Clock::time_point now{};
};

TEST_F(InactivityTest, BeginsAfterTheLimit) {
  EXPECT_FALSE(stays(0, 60));
  EXPECT_TRUE(inactivity.exceeded(0, now += seconds(1)));
}

TEST_F(InactivityTest, EndsWithEveryByte) {
  EXPECT_FALSE(stays(0, 50));
  EXPECT_FALSE(stays(1, 50));
  EXPECT_FALSE(stays(2, 60));
  EXPECT_TRUE(stays(2, 1));
}

TEST_F(InactivityTest, BeginsAnewWithTheNextTransfer) {
  EXPECT_FALSE(stays(0, 50));
  now += seconds(30);
  EXPECT_FALSE(stays(0, 50));
}

TEST_F(InactivityTest, NeverEndsATransferWithoutALimit) {
  inactivity = Inactivity(seconds(0));
  EXPECT_FALSE(stays(0, 10'000));
}

}  // namespace
}  // namespace velkor::ctl
