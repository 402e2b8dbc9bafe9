/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/text_search.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "support/text.h"

namespace velkor {
namespace {

using namespace std::string_view_literals;

bool occurs(std::string_view text, std::string_view needle) {
  return TextSearch(needle).occurs_in(text);
}

TEST(TextSearch, FindsRegardlessOfCase) {
  EXPECT_TRUE(occurs("Film in DivX", "divx"));
  EXPECT_TRUE(occurs("a film in divx, complete and in colour", "DIVX"));
  EXPECT_FALSE(occurs("DivX", "divx5"));
}

TEST(TextSearch, EmptyTextOccursEverywhere) {
  EXPECT_TRUE(occurs("", ""));
  EXPECT_TRUE(occurs("text", ""));
  EXPECT_TRUE(occurs("text", "\0x"sv));
  EXPECT_FALSE(occurs("", "ab"));
}

TEST(TextSearch, OnlyAsciiLettersHaveACase) {
  EXPECT_FALSE(occurs("een [lang] verhaal over niets", "{lang}"));
  EXPECT_FALSE(occurs("caf\u00c9 \u00c9\u00c9n", "\u00e9\u00e9n"));
  EXPECT_FALSE(occurs("a@b", "`b"));
}

TEST(TextSearch, TextsEndAtTheirFirstZero) {
  EXPECT_FALSE(occurs("ab\0cd"sv, "cd"));
  EXPECT_FALSE(occurs("een lange titel\0 met iets erachter"sv, "iets"));
  EXPECT_TRUE(occurs("een lange titel\0 met iets erachter"sv, "titel"));
  EXPECT_TRUE(occurs("abc", "AB\0x"sv));
}

TEST(TextSearch, FindsAtEveryPlaceOfTextsOfEveryLength) {
  for (std::size_t length = 2; length < 70; ++length) {
    for (std::size_t place = 0; place + 2 <= length; ++place) {
      std::string text(length, 'x');
      text.replace(place, 2, "Yz");
      EXPECT_TRUE(occurs(text, "yZ")) << text;
      EXPECT_FALSE(occurs(text.substr(0, place + 1), "yZ")) << text;
    }
  }
}

TEST(TextSearch, FindsWhatThePlainSearchFinds) {
  std::mt19937 random(8);
  const auto letters = [&random](unsigned most) {
    std::string text;
    for (unsigned count = static_cast<unsigned>(random()) % (most + 1); count > 0; --count)
      text += "aAbB[{ \0"sv[random() % 8];
    return text;
  };
  int found = 0;
  for (int round = 0; round < 50000; ++round) {
    const std::string text = letters(40);
    const std::string needle = letters(4);
    const bool expected = contains_ignoring_case(text, needle);
    ASSERT_EQ(occurs(text, needle), expected) << text << " / " << needle;
    found += expected ? 1 : 0;
  }
  EXPECT_GT(found, 5000);
  EXPECT_LT(found, 45000);
}

}  // namespace
}  // namespace velkor
