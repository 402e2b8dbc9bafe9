/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/word_set.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/owned.h"
#include "support/text.h"

namespace velkor {
namespace {

using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

/** A set of these words, of which the list lives no longer than the constructor. */
WordSet set_of(const Texts &words) {
  std::vector<GString> items;
  for (const std::string &word : words)
    items.push_back({const_cast<char *>(word.data()), word.size(), word.size() + 1});
  GSList *list = nullptr;
  for (auto item = items.rbegin(); item != items.rend(); ++item)
    list = g_slist_prepend(list, &*item);
  const OwnedCells cells(list);
  return WordSet(list);
}

/** Each word by itself. */
bool one_by_one(const Texts &words, std::string_view text) {
  return std::ranges::any_of(
      words, [text](const std::string &word) { return contains_ignoring_case(text, word); });
}

TEST(WordSet, FindsAnyWordRegardlessOfCase) {
  const WordSet words = set_of({"divx", "Debian", "x264"});
  EXPECT_TRUE(words.occurs_in("een film in DivX"));
  EXPECT_TRUE(words.occurs_in("DEBIAN is nieuw"));
  EXPECT_TRUE(words.occurs_in("X264"));
  EXPECT_FALSE(words.occurs_in("een div, x of deb"));
  EXPECT_FALSE(words.occurs_in(""));
}

TEST(WordSet, WithoutWordsNothingIsFound) {
  EXPECT_FALSE(set_of({}).occurs_in("tekst"));
  EXPECT_FALSE(set_of({}).occurs_in(""));
}

TEST(WordSet, EmptyWordOccursEverywhere) {
  EXPECT_TRUE(set_of({"lang", ""}).occurs_in(""));
  EXPECT_TRUE(set_of({std::string("\0x"sv)}).occurs_in("tekst"));
}

TEST(WordSet, FindsAWordThatBeginsWithinAnother) {
  EXPECT_TRUE(set_of({"abcd", "bce"}).occurs_in("abce"));
  EXPECT_TRUE(set_of({"abcd", "bc"}).occurs_in("abcx"));
  EXPECT_TRUE(set_of({"aab"}).occurs_in("aaab"));
  EXPECT_TRUE(set_of({"abab", "babb"}).occurs_in("ababb"));
  EXPECT_FALSE(set_of({"abcd", "bcde"}).occurs_in("abce"));
}

TEST(WordSet, TextsEndAtTheirFirstZero) {
  EXPECT_FALSE(set_of({"cd"}).occurs_in("ab\0cd"sv));
  EXPECT_TRUE(set_of({std::string("ab\0x"sv)}).occurs_in("xabx"));
}

TEST(WordSet, FindsLongWordsAsAWhole) {
  const std::string word(16, 'x');
  const WordSet words = set_of({word + "abc", "kort"});
  EXPECT_TRUE(words.occurs_in("voor " + word + "ABC na"));
  EXPECT_FALSE(words.occurs_in("voor " + word + "abd na"));
  EXPECT_TRUE(words.occurs_in(word + "abd kort"));
  EXPECT_TRUE(words.occurs_in("kort " + word));
  EXPECT_TRUE(set_of({word + "abc", word}).occurs_in(word + "d"));
  EXPECT_TRUE(set_of({word, word + "abc"}).occurs_in(word + "d"));
  EXPECT_TRUE(set_of({word + "abc", "xxa"}).occurs_in(word + "ad"));
}

TEST(WordSet, TakesEveryByte) {
  Texts words;
  for (int byte = 1; byte < 256; ++byte)
    words.push_back({static_cast<char>(byte), '!', static_cast<char>(byte)});
  const WordSet set = set_of(words);
  for (const std::string &word : words) {
    EXPECT_TRUE(set.occurs_in(word));
    EXPECT_FALSE(set.occurs_in(word.substr(0, 2)));
  }
}

TEST(WordSet, NullEndsTheListEarly) {
  GString first{const_cast<char *>("een"), 3, 4};
  GString last{const_cast<char *>("twee"), 4, 5};
  const OwnedCells cells(
      g_slist_prepend(g_slist_prepend(g_slist_prepend(nullptr, &last), nullptr), &first));
  const WordSet words(cells.get());
  EXPECT_TRUE(words.cut_short());
  EXPECT_TRUE(words.occurs_in("een"));
  EXPECT_FALSE(words.occurs_in("twee"));
  EXPECT_FALSE(set_of({"een"}).cut_short());
}

TEST(WordSet, FindsWhatTheWordsFindOneByOne) {
  std::mt19937 random(11);
  const auto letters = [&random](unsigned least, unsigned most) {
    std::string text;
    for (auto left = least + static_cast<unsigned>(random()) % (most - least + 1); left > 0; --left)
      text += "aAbBcC[{\xe9 \0"sv[random() % 11];
    return text;
  };
  int found = 0;
  for (int round = 0; round < 3000; ++round) {
    Texts words;
    for (auto left = static_cast<unsigned>(random()) % 12; left > 0; --left)
      words.push_back(letters(random() % 50 == 0 ? 0 : 2, 5));
    if (round % 3 == 0)
      words.push_back(std::string(static_cast<std::size_t>(15 + round % 4), 'a') + letters(0, 1));
    const WordSet set = set_of(words);
    for (int number = 0; number < 10; ++number) {
      const std::string text = letters(0, 10) +
                               std::string(number % 2 == 0 ? 14 + random() % 5 : 0, 'A') +
                               letters(0, 10);
      const bool expected = one_by_one(words, text);
      ASSERT_EQ(set.occurs_in(text), expected) << text;
      found += expected ? 1 : 0;
    }
  }
  EXPECT_GT(found, 5000);
  EXPECT_LT(found, 25000);
}

}  // namespace
}  // namespace velkor
