/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/bitmap.h"

#include <gtest/gtest.h>

namespace velkor::app {
namespace {

TEST(Bitmap, HoldsWhatWasInserted) {
  Bitmap rows;
  for (const std::size_t row :
       {std::size_t{0}, std::size_t{63}, std::size_t{64}, std::size_t{1000}})
    rows.insert(row);
  EXPECT_TRUE(rows.contains(0));
  EXPECT_TRUE(rows.contains(63));
  EXPECT_TRUE(rows.contains(64));
  EXPECT_TRUE(rows.contains(1000));
  EXPECT_FALSE(rows.contains(1));
  EXPECT_FALSE(rows.contains(65));
  EXPECT_FALSE(rows.contains(1'000'000));
}

TEST(Bitmap, StartsEmpty) {
  EXPECT_FALSE(Bitmap().contains(0));
}

}  // namespace
}  // namespace velkor::app
