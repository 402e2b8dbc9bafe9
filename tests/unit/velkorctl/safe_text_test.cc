/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/safe_text.h"

#include <string>

#include <gtest/gtest.h>

namespace velkor::ctl {
namespace {

TEST(SafeText, KeepsWordsOfAnyScript) {
  EXPECT_EQ(safe_text("Café 日本 Ελλάς"), "Café 日本 Ελλάς");
}

TEST(SafeText, ReplacesEscapeSequences) {
  EXPECT_EQ(safe_text("\033]0;title\007\033[2J"), "\uFFFD]0;title\uFFFD\uFFFD[2J");
}

TEST(SafeText, ReplacesEightBitControls) {
  EXPECT_EQ(safe_text("a\u009b31mb"), "a\uFFFD31mb");
}

TEST(SafeText, ReplacesDirectionMarks) {
  EXPECT_EQ(safe_text("a\u202Eb\u2066c\u200F"), "a\uFFFDb\uFFFDc\uFFFD");
}

TEST(SafeText, NoTextIsAnEmptyOne) {
  EXPECT_EQ(safe_text(std::string_view()), "");
}

TEST(SafeText, MakesOneLineOfSeveral) {
  EXPECT_EQ(safe_text("a\nb\tc\r\n"), "a b c  ");
}

TEST(SafeText, KeepsLinesWhenAsked) {
  EXPECT_EQ(safe_text("a\nb\033c\n", Lines::keep), "a\nb\uFFFDc\n");
}

TEST(SafeText, RepairsInvalidUtf8) {
  EXPECT_EQ(safe_text("a\xff\xc3"), "a\uFFFD\uFFFD");
}

TEST(SafeText, LetsNoZeroByteEndTheText) {
  EXPECT_EQ(safe_text(std::string("a\0b", 3)), "a\uFFFDb");
}

TEST(DisplayWidth, CountsCells) {
  EXPECT_EQ(display_width(""), 0);
  EXPECT_EQ(display_width("abc"), 3);
  EXPECT_EQ(display_width("日本"), 4);
  EXPECT_EQ(display_width("e\u0301"), 1);
}

TEST(Fit, LeavesShortTextsAlone) {
  EXPECT_EQ(fit("abc", 3), "abc");
  EXPECT_EQ(fit("", 0), "");
}

TEST(Fit, MarksACut) {
  EXPECT_EQ(fit("abcdef", 4), "abc…");
  EXPECT_EQ(fit("abcdef", 1), "…");
  EXPECT_EQ(fit("abcdef", 0), "");
}

TEST(Fit, NeverCutsAWideCharacterInTwo) {
  EXPECT_EQ(fit("日本語", 4), "日…");
  EXPECT_EQ(fit("日本語", 5), "日本…");
}

}  // namespace
}  // namespace velkor::ctl
