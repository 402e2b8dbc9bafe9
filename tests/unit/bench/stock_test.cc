/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/stock.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::bench {
namespace {

constexpr std::int64_t now = 1'700'000'000;
constexpr std::int64_t day = 86'400;

/** The numbers in the elements of that name. */
std::vector<std::int64_t> numbers_in(const std::string &document, const std::string &name) {
  const std::regex element("<" + name + ">(-?[0-9]+)<");
  std::vector<std::int64_t> numbers;
  std::transform(std::sregex_iterator(document.begin(), document.end(), element), {},
                 std::back_inserter(numbers),
                 [](const std::smatch &match) { return std::stoll(match[1]); });
  return numbers;
}

TEST(StockTest, FewerPostingsHaveFewerChanges) {
  const Changes common = changes_of(100'000);
  EXPECT_EQ(common.added, 5000);
  EXPECT_EQ(common.changed, 30);
  EXPECT_EQ(common.deleted, 15);
  EXPECT_EQ(changes_of(1'000'000).added, 5000);
  EXPECT_EQ(changes_of(10'000).added, 500);
  EXPECT_EQ(changes_of(1000).deleted, 1);
}

TEST(StockTest, OnlyTheFirstPostingsAreTooOld) {
  const Timeline timeline = place_of("", 10'000, now).timeline;
  EXPECT_EQ(timeline.aged, 500);
  EXPECT_LT(timeline.stamp_of(499), now - 14 * day - day / 2);
  EXPECT_GT(timeline.stamp_of(500), now - 14 * day + day / 2);
  EXPECT_LT(timeline.stamp_of(10'499), now);
  for (std::int64_t number = 1; number < 10'500; ++number)
    ASSERT_LE(timeline.stamp_of(number - 1), timeline.stamp_of(number));
}

class StockDocumentTest : public testing::Test {
protected:
  test::TemporaryDirectory directory_;
  Place place_ = place_of(directory_.path().string(), 2000, now);

  void SetUp() override { write_documents(place_); }
};

TEST_F(StockDocumentTest, HoldsEveryPostingInOrder) {
  const std::vector<std::int64_t> ids = numbers_in(test::read_file(place_.document()), "PostID");
  ASSERT_EQ(ids.size(), 2000);
  for (std::size_t number = 0; number < ids.size(); ++number)
    ASSERT_EQ(ids[number], id_of(static_cast<std::int64_t>(number)));
}

TEST_F(StockDocumentTest, HasPostingsOfSomeFiveHundredBytes) {
  const auto size = std::filesystem::file_size(place_.document());
  EXPECT_GT(size, 2000U * 480);
  EXPECT_LT(size, 2000U * 560);
}

TEST_F(StockDocumentTest, ChangesAreNewPostingsAndSomeThatAreSpreadOverTheStock) {
  const std::string document = test::read_file(place_.changes());
  const Changes changes = changes_of(2000);
  const std::vector<std::int64_t> ids = numbers_in(document, "PostID");
  const std::set<std::int64_t> different(ids.begin(), ids.end());
  EXPECT_EQ(different.size(), ids.size());
  const auto added = std::ranges::count_if(ids, [](auto id) { return id >= id_of(2000); });
  EXPECT_EQ(added, changes.added);
  EXPECT_EQ(std::ssize(ids) - added, changes.changed + changes.deleted);
  EXPECT_GE(*different.begin(), id_of(place_.timeline.aged));
}

TEST_F(StockDocumentTest, SomeOfTheChangesAreDeletions) {
  const std::vector<std::int64_t> states = numbers_in(test::read_file(place_.changes()), "Status");
  EXPECT_EQ(std::ranges::count(states, -2), changes_of(2000).deleted);
  EXPECT_THAT(numbers_in(test::read_file(place_.document()), "Status"),
              testing::Each(testing::Ge(-1)));
}

}  // namespace
}  // namespace velkor::bench
