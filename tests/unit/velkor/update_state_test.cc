/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/update_state.h"

#include <gtest/gtest.h>

namespace velkor::app {
namespace {

TEST(UpdateState, TheFractionCoversAllDumps) {
  EXPECT_EQ(UpdateProgress{}.fraction(), 0);
  EXPECT_EQ((UpdateProgress{.dump = 1, .dumps = 4}.fraction()), 0);
  EXPECT_EQ((UpdateProgress{.dump = 3, .dumps = 4}.fraction()), 0.5);
  EXPECT_EQ((UpdateProgress{.dump = 3, .dumps = 4, .received = 50, .expected = 100}.fraction()),
            0.625);
  EXPECT_EQ((UpdateProgress{.dump = 4, .dumps = 4, .saving = true}.fraction()), 1);
}

TEST(UpdateState, TheFractionStaysInItsBounds) {
  EXPECT_EQ((UpdateProgress{.dump = 1, .dumps = 1, .received = 300, .expected = 100}.fraction()),
            1);
  EXPECT_EQ((UpdateProgress{.dump = 9, .dumps = 2}.fraction()), 1);
  EXPECT_EQ((UpdateProgress{.dump = 1, .dumps = 2, .received = 50}.fraction()), 0);
}

TEST(UpdateState, EverythingThatCameIsReceived) {
  EXPECT_EQ((UpdateOutcome{.fresh = 3, .changed = 4, .deleted = 5, .aged_out = 9}.received()), 12U);
}

}  // namespace
}  // namespace velkor::app
