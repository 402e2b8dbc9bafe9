/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/watched_spots.h"

#include <gtest/gtest.h>

#include "tests/unit/velkor/snapshots.h"

namespace velkor::app {
namespace {

TEST(WatchedSpots, AreTheNewestFirstAndBehindThemTheUnknown) {
  const SharedSnapshot snapshot =
      snapshot_of({{.id = 1, .stamp = 10}, {.id = 2, .stamp = 30}, {.id = 3, .stamp = 20}});
  EXPECT_EQ(watched_spots(*snapshot, {1, 2, 9, 7}),
            (std::vector<WatchedSpot>{{2, 1}, {1, 0}, {7, {}}, {9, {}}}));
  EXPECT_TRUE(watched_spots(*snapshot, {}).empty());
}

TEST(SpotNumber, IsAPositiveNumber) {
  EXPECT_EQ(spot_number("123"), 123);
  EXPECT_EQ(spot_number("  2147483647 "), 2147483647);
  for (const char *text : {"", " ", "0", "-1", "12a", "2147483648", "1 2"})
    EXPECT_EQ(spot_number(text), std::nullopt) << text;
}

}  // namespace
}  // namespace velkor::app
