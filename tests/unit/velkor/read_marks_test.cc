/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/read_marks.h"

#include <limits>

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

constexpr std::uint64_t large = std::numeric_limits<std::uint64_t>::max();

class ReadMarksTest : public ::testing::Test {
protected:
  test::TemporaryDirectory directory_;
  std::filesystem::path file_ = directory_.path() / "velkor" / "read-messages";
};

TEST_F(ReadMarksTest, AreKeptFromOneStartToTheNext) {
  ReadMarks marks(file_);
  EXPECT_TRUE(marks.is_unread({.id = large}));
  EXPECT_EQ(marks.add({.id = large}), "");
  EXPECT_FALSE(marks.is_unread({.id = large}));
  const ReadMarks again(file_);
  EXPECT_FALSE(again.is_unread({.id = large}));
  EXPECT_TRUE(again.is_unread({.id = 7}));
}

TEST_F(ReadMarksTest, AreNotNeededForSentMessages) {
  ReadMarks marks(file_);
  EXPECT_FALSE(marks.is_unread({.id = 7, .sent = true}));
  EXPECT_EQ(marks.add({.id = 7, .sent = true}), "");
  EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(ReadMarksTest, LinesWithoutANumberArePassedOver) {
  EXPECT_EQ(ReadMarks(file_).add({.id = 1}), "");
  test::write_file(file_, "12\nnothing\n34x\n\n56\n");
  const ReadMarks marks(file_);
  EXPECT_FALSE(marks.is_unread({.id = 12}));
  EXPECT_TRUE(marks.is_unread({.id = 34}));
  EXPECT_FALSE(marks.is_unread({.id = 56}));
}

TEST_F(ReadMarksTest, TellWhyTheyCannotBeWritten) {
  test::write_file(directory_.path() / "velkor", "in the way");
  ReadMarks marks(file_);
  EXPECT_NE(marks.add({.id = 1}), "");
  EXPECT_FALSE(marks.is_unread({.id = 1}));
}

}  // namespace
}  // namespace velkor::app
