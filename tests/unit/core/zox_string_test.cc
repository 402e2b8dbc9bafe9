/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_string.h>

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "support/owned.h"
#include "tests/support/log_capture.h"
#include "tests/support/sandbox.h"

namespace velkor {
namespace {

/** What a function handed over, as a value to compare. */
std::string taken(ZoxString *text) {
  const OwnedString owned(text);
  return owned ? std::string(owned->str, owned->len) : "(null)";
}
std::string taken(char *text) {
  const OwnedText owned(text);
  return owned ? owned.get() : "(null)";
}

std::string stripped(const char *name) {
  const OwnedString text(zox_string_new(name));
  return taken(zox_string_strip_newsgroup(text.get()));
}

std::string with_http(const char *address) {
  const OwnedString text(zox_string_new(address));
  return taken(zox_string_add_http(text.get()));
}

std::string replaced(const char *source, const char *search, const char *replacement) {
  const OwnedString text(zox_string_new(source));
  return taken(zox_string_replace(text.get(), search, replacement));
}

TEST(ZoxString, KeepsNullApartFromEmpty) {
  EXPECT_EQ(zox_string_new(nullptr), nullptr);
  EXPECT_EQ(zox_string_value(nullptr), nullptr);
  const OwnedString empty(zox_string_new(""));
  ASSERT_NE(empty, nullptr);
  EXPECT_STREQ(zox_string_value(empty.get()), "");
}

TEST(ZoxString, HoldsACopy) {
  std::string original = "tekst";
  const OwnedString copy(zox_string_new(original.c_str()));
  original = "ander";
  EXPECT_STREQ(zox_string_value(copy.get()), "tekst");
}

TEST(ZoxStringInteger, PrintsTheNumber) {
  EXPECT_EQ(taken(zox_string_integer(0)), "0");
  EXPECT_EQ(taken(zox_string_integer(-42)), "-42");
  EXPECT_EQ(taken(zox_string_integer(2147483647)), "2147483647");
  EXPECT_EQ(taken(zox_string_integer(-999999999)), "-999999999");
}

TEST(ZoxStringInteger, CutsElevenCharactersToTen) {
  EXPECT_EQ(taken(zox_string_integer(std::numeric_limits<gint32>::min())), "-214748364");
  EXPECT_EQ(taken(zox_string_integer(-1234567890)), "-123456789");
}

TEST(ZoxStringCategory, NamesTheFourCategories) {
  EXPECT_STREQ(zox_string_category(0), "Beeld");
  EXPECT_STREQ(zox_string_category(1), "Geluid");
  EXPECT_STREQ(zox_string_category(2), "Spelletjes");
  EXPECT_STREQ(zox_string_category(3), "Applicaties");
}

TEST(ZoxStringCategory, IsEmptyForAnyOtherNumber) {
  for (const gint32 number : {4, -1, G_MAXINT32, G_MININT32})
    EXPECT_STREQ(zox_string_category(number), "");
}

TEST(ZoxStringStatus, NamesTheStates) {
  EXPECT_STREQ(zox_string_status(-5), "Onbekend");
  EXPECT_STREQ(zox_string_status(-3), "Verwijderd");
  EXPECT_STREQ(zox_string_status(-2), "Verwijderd");
  EXPECT_STREQ(zox_string_status(-1), "Spot");
  EXPECT_STREQ(zox_string_status(0), "Ready");
  EXPECT_STREQ(zox_string_status(1), "Aangekondigd");
  EXPECT_STREQ(zox_string_status(2), "Bezig met uploaden");
  EXPECT_STREQ(zox_string_status(3), "Niet meer ondersteund");
}

TEST(ZoxStringStatus, IsEmptyForAnyOtherNumber) {
  for (const gint32 number : {-4, 4, -6, G_MAXINT32, G_MININT32})
    EXPECT_STREQ(zox_string_status(number), "");
}

TEST(ZoxStringStripNewsgroup, ShortensTheBinariesGroups) {
  EXPECT_EQ(stripped("alt.binaries.tv"), "a.b.tv");
  EXPECT_EQ(stripped("alt.binaries"), "a.b");
  EXPECT_EQ(stripped("alt.binaries."), "a.b.");
  EXPECT_EQ(stripped("alt.binariesXtv"), "a.b.tv");
}

TEST(ZoxStringStripNewsgroup, CopiesEveryOtherName) {
  for (const char *name : {"alt.bin", "comp.os", "Alt.binaries.tv", ""})
    EXPECT_EQ(stripped(name), name);
}

TEST(ZoxStringUpcase, TouchesOnlyAsciiLetters) {
  EXPECT_EQ(taken(zox_string_upcase("aZ-9 caf\u00e9")), "AZ-9 CAF\u00e9");
}

TEST(ZoxStringAddHttp, PutsTheSchemeInFront) {
  EXPECT_EQ(with_http("x"), "http://x");
  EXPECT_EQ(with_http("https://x"), "http://https://x");
}

TEST(ZoxStringAddHttp, LeavesAnAddressThatHasIt) {
  EXPECT_EQ(with_http("HTTP://x"), "HTTP://x");
  EXPECT_EQ(with_http("http://"), "http://");
}

TEST(ZoxStringAddHttp, IsEmptyForNothing) {
  EXPECT_EQ(with_http(nullptr), "");
  EXPECT_EQ(with_http(""), "");
}

TEST(ZoxStringDate, PrintsLocalTime) {
  const test::Sandbox sandbox;
  EXPECT_EQ(taken(zox_string_date(0)), "01-01 (01:00)");
  EXPECT_EQ(taken(zox_string_date(1214913600)), "01-07 (14:00)");
}

TEST(ZoxStringDate, FollowsAChangedTimeZone) {
  const test::Sandbox sandbox;
  EXPECT_EQ(taken(zox_string_date(0)), "01-01 (01:00)");
  const test::EnvironmentVariable zone("TZ", "UTC-5");
  EXPECT_EQ(taken(zox_string_date(0)), "01-01 (05:00)");
}

TEST(ZoxStringDate, RefusesATimeBeyondTheCalendar) {
  const test::LogCapture log;
  EXPECT_EQ(zox_string_date(std::numeric_limits<gint64>::max()), nullptr);
  EXPECT_EQ(log.warnings(),
            std::vector<std::string>{"zox_string_date(): datum kan niet geparsed worden\n"});
}

TEST(ZoxStringReplace, IgnoresCase) {
  EXPECT_EQ(replaced("Foo foo FOO", "foo", "bar"), "bar bar bar");
  EXPECT_EQ(replaced("een Twee drie", "TWEE", "2"), "een 2 drie");
}

TEST(ZoxStringReplace, KeepsTheCaseOfTheRest) {
  EXPECT_EQ(replaced("AbcXdEf", "x", "--"), "Abc--dEf");
}

TEST(ZoxStringReplace, ResumesBehindEachHit) {
  EXPECT_EQ(replaced("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replaced("aaaa", "aa", "aa"), "aaaa");
}

TEST(ZoxStringReplace, CopiesWhatHasNoHit) {
  EXPECT_EQ(replaced("ab", "abc", "x"), "ab");
  EXPECT_EQ(replaced("abc", "z", "x"), "abc");
  EXPECT_EQ(replaced("", "z", "x"), "");
}

TEST(ZoxStringReplace, MayRemove) {
  EXPECT_EQ(replaced("a b c", " ", ""), "abc");
}

TEST(ZoxStringReplace, TakesTimeInProportion) {
  const std::string source(1 << 20, 'a');
  EXPECT_EQ(replaced(source.c_str(), "a", "bb").size(), source.size() * 2);
}

TEST(ZoxStringReplaceDeathTest, NeedsASourceAndSomethingToLookFor) {
  EXPECT_DEATH(zox_string_replace(nullptr, "a", "b"), "assertion failed: \\(bron\\)");
  const OwnedString text(zox_string_new("tekst"));
  EXPECT_DEATH(zox_string_replace(text.get(), "", "b"), "assertion failed: \\(\\*search");
}

}  // namespace
}  // namespace velkor
