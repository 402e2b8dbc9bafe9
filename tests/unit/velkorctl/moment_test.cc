/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/moment.h"

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::ctl {
namespace {

/** Times are local: the sandbox pins the zone to Amsterdam. */
class MomentTest : public ::testing::Test {
protected:
  static std::optional<std::int64_t> parse(const std::string &text,
                                           DayEdge edge = DayEdge::first_second) {
    return parse_moment(text, now, edge);
  }

  /** 2026-03-30 12:00:00, the day after summer time began. */
  static constexpr std::int64_t now = 1774864800;

private:
  test::Sandbox sandbox_;
};

TEST_F(MomentTest, ReadsADate) {
  EXPECT_EQ(parse("2026-01-31"), 1769814000);
  EXPECT_EQ(parse("2026-1-31"), 1769814000);
  EXPECT_EQ(parse("2026-01-31", DayEdge::last_second), 1769814000 + 86399);
}

TEST_F(MomentTest, ADayOfClockChangeEndsWithItsLastSecond) {
  EXPECT_EQ(*parse("2026-03-29", DayEdge::last_second) - *parse("2026-03-29"), 23 * 3600 - 1);
}

TEST_F(MomentTest, ReadsATimeOfDay) {
  EXPECT_EQ(parse("2026-01-31 18:30"), 1769814000 + 66600);
  EXPECT_EQ(parse("2026-01-31T18:30:15"), 1769814000 + 66615);
  EXPECT_EQ(parse("2026-01-31 18:30", DayEdge::last_second), 1769814000 + 66600);
}

TEST_F(MomentTest, ReadsAges) {
  EXPECT_EQ(parse("90m"), now - 5400);
  EXPECT_EQ(parse("12h"), now - 43200);
  EXPECT_EQ(parse("3d"), now - 3 * 86400);
  EXPECT_EQ(parse("2w"), now - 14 * 86400);
}

TEST_F(MomentTest, ReadsNamesOfDays) {
  EXPECT_EQ(parse("today"), now - 12 * 3600);
  EXPECT_EQ(parse("yesterday"), now - 12 * 3600 - 23 * 3600);
  EXPECT_EQ(parse("today", DayEdge::last_second), now + 12 * 3600 - 1);
}

TEST_F(MomentTest, ReadsSecondsSince1970) {
  EXPECT_EQ(parse("@1700000000"), 1700000000);
}

TEST_F(MomentTest, RefusesAnythingElse) {
  for (const char *text : {"", "@", "@x", "d", "-3d", "3x", "2026-13-01", "2026-02-30", "2026-01",
                           "2026-01-31 ", "2026-01-31 18", "2026-01-31 25:00", "2026-01-31 18:30x",
                           "2026-01-31 18:30:60", "x2026-01-31", "99999999999d"})
    EXPECT_EQ(parse(text), std::nullopt) << text;
}

TEST_F(MomentTest, ShowsLocalTime) {
  EXPECT_EQ(show_moment(1769814000 + 66600), "2026-01-31 18:30");
  EXPECT_EQ(show_moment(now), "2026-03-30 12:00");
}

}  // namespace
}  // namespace velkor::ctl
