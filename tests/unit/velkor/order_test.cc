/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/velkor/snapshots.h"

namespace velkor::app {
namespace {

using ::testing::ElementsAre;

std::vector<std::int32_t> sorted(const std::vector<PostingFields> &postings, Column column) {
  const SharedSnapshot snapshot = snapshot_of(postings);
  return ids_of(*snapshot, Orders(snapshot).by(column));
}

TEST(Order, ByTitleRegardlessOfCase) {
  EXPECT_THAT(sorted({{.id = 1, .title = "beta"},
                      {.id = 2, .title = "Alfa"},
                      {.id = 3, .title = "Gamma"},
                      {.id = 4, .title = "ALFABET"}},
                     Column::title),
              ElementsAre(2, 4, 1, 3));
}

TEST(Order, ByPoster) {
  EXPECT_THAT(
      sorted({{.id = 1, .poster = "Zwaan"}, {.id = 2, .poster = "aap"}, {.id = 3}}, Column::poster),
      ElementsAre(3, 2, 1));
}

TEST(Order, ByTheNamesOfCategoriesAndStates) {
  const std::vector<PostingFields> postings{{.id = 1, .category = 0, .sub_category = 1},
                                            {.id = 2, .status = 1, .category = 1},
                                            {.id = 3, .category = 0}};
  EXPECT_THAT(sorted(postings, Column::category), ElementsAre(2, 3, 1));
  EXPECT_THAT(sorted(postings, Column::status), ElementsAre(2, 1, 3));
}

TEST(Order, ByDateAndRating) {
  const std::vector<PostingFields> postings{{.id = 1, .stamp = 30, .rating = 5},
                                            {.id = 2, .stamp = 10, .rating = 90},
                                            {.id = 3, .stamp = 20, .rating = -1}};
  EXPECT_THAT(sorted(postings, Column::date), ElementsAre(2, 3, 1));
  EXPECT_THAT(sorted(postings, Column::rating), ElementsAre(3, 1, 2));
}

TEST(Order, EqualOnesByDateThenById) {
  EXPECT_THAT(sorted({{.id = 9, .title = "x", .stamp = 2},
                      {.id = 7, .title = "X", .stamp = 2},
                      {.id = 8, .title = "x", .stamp = 1}},
                     Column::title),
              ElementsAre(8, 7, 9));
}

TEST(Order, ColumnsAreKnownByTheirKeys) {
  for (std::size_t place = 0; place < column_count; ++place) {
    const auto column = static_cast<Column>(place);
    EXPECT_EQ(column_with_key(column_key(column)), column);
  }
  EXPECT_EQ(column_with_key("size"), std::nullopt);
}

}  // namespace
}  // namespace velkor::app
