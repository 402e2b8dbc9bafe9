/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/text.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace velkor {
namespace {

using namespace std::string_view_literals;

TEST(ContainsIgnoringCase, FindsTheNeedleWhateverItsCase) {
  EXPECT_TRUE(contains_ignoring_case("Film in DivX", "divx"));
  EXPECT_TRUE(contains_ignoring_case("divx", "DIVX"));
  EXPECT_TRUE(contains_ignoring_case("a a ab", "AB"));
}

TEST(ContainsIgnoringCase, RefusesWhatIsNotThere) {
  EXPECT_FALSE(contains_ignoring_case("DivX", "divx5"));
  EXPECT_FALSE(contains_ignoring_case("", "a"));
  EXPECT_FALSE(contains_ignoring_case("aXa", "ab"));
}

TEST(ContainsIgnoringCase, FindsTheEmptyNeedleEverywhere) {
  EXPECT_TRUE(contains_ignoring_case("", ""));
  EXPECT_TRUE(contains_ignoring_case("text", ""));
}

TEST(ContainsIgnoringCase, FoldsOnlyAsciiLetters) {
  EXPECT_FALSE(contains_ignoring_case("caf\u00c9", "caf\u00e9"));
  EXPECT_FALSE(contains_ignoring_case("[", "{"));
}

TEST(ContainsIgnoringCase, EndsAtTheFirstZeroByte) {
  EXPECT_FALSE(contains_ignoring_case("ab\0cd"sv, "cd"));
  EXPECT_TRUE(contains_ignoring_case("ab", "AB\0x"sv));
}

TEST(ContainsIgnoringCase, FindsANeedleAtTheVeryEnd) {
  const std::string text(1000, 'x');
  EXPECT_TRUE(contains_ignoring_case(text + "Yz", "yZ"));
  EXPECT_FALSE(contains_ignoring_case(text + "Y", "yZ"));
}

TEST(EqualIgnoringCase, ComparesWholeTexts) {
  EXPECT_TRUE(equal_ignoring_case("Events", "eVENTS"));
  EXPECT_FALSE(equal_ignoring_case("Event", "Events"));
}

TEST(LeadingInteger, ReadsLikeTheStandardConversion) {
  EXPECT_EQ(leading_integer("  -12abc"), -12);
  EXPECT_EQ(leading_integer("abc"), 0);
  EXPECT_EQ(leading_integer(""), 0);
}

TEST(LeadingInteger, ReadsDigitsOfAnyNumber) {
  for (const char *text :
       {"0", "7", "007", "12 34", "0x10", "123456789", "1234567890", "999999999x", "2147483647",
        "0000000000012", "99999999999999999999", "+5", "-0", "."})
    EXPECT_EQ(leading_integer(text),
              static_cast<gint32>(static_cast<guint32>(std::strtol(text, nullptr, 10))))
        << text;
}

TEST(LeadingInteger, KeepsTheLow32Bits) {
  EXPECT_EQ(leading_integer("4294967295"), -1);
  EXPECT_EQ(leading_integer("4294967298"), 2);
}

}  // namespace
}  // namespace velkor
