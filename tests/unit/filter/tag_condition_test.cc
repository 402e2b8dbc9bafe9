/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/tag_condition.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velkor/zox_splitted_list.h>

#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

/** A list of texts while it lives. */
class Codes {
public:
  explicit Codes(const std::string &stored) : list_(zox_splitted_list_split(stored.c_str())) {}
  ~Codes() { zox_splitted_list_free(&list_); }
  Codes(const Codes &) = delete;
  Codes &operator=(const Codes &) = delete;

  [[nodiscard]] const GSList *list() const { return list_; }
  [[nodiscard]] std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (const GString *item : Items<const GString>(list_))
      texts.emplace_back(view_of(item));
    return texts;
  }

private:
  GSList *list_;
};

bool met(const std::string &wanted, const std::string &tags) {
  const Codes codes(wanted);
  const Codes posting(tags);
  return TagCondition(codes.list()).met_by(posting.list());
}

/** The rule word for word: every group with a code needs one of its codes. */
bool met_word_for_word(const std::vector<std::string> &wanted,
                       const std::vector<std::string> &tags) {
  return std::ranges::all_of(std::string("abcd"), [&](char letter) {
    bool required = false;
    bool satisfied = false;
    for (const std::string &code : wanted) {
      if (!code.starts_with(letter))
        continue;
      required = true;
      satisfied = satisfied || std::ranges::find(tags, code) != tags.end();
    }
    return !required || satisfied;
  });
}

TEST(TagCondition, CodesOfOneGroupAreAlternatives) {
  EXPECT_TRUE(met("a0|a1|d23", "a1|d23"));
  EXPECT_FALSE(met("a0|a1|d23", "a0"));
  EXPECT_FALSE(met("b0|b1", "a3"));
}

TEST(TagCondition, OtherLettersCountNothing) {
  EXPECT_TRUE(met("e5|x", ""));
  EXPECT_TRUE(met("", "a1"));
  EXPECT_FALSE(met("e5|a1", "e5"));
}

TEST(TagCondition, CodesAreEqualExactly) {
  EXPECT_FALSE(met("a1", "a01"));
  EXPECT_FALSE(met("a01", "a1"));
  EXPECT_TRUE(met("a01", "a01"));
  EXPECT_FALSE(met("a1", "A1"));
  EXPECT_FALSE(met("a1", "a1 "));
  EXPECT_TRUE(met("d64|a63", "a63|d64"));
  EXPECT_FALSE(met("d63", "d127"));
  EXPECT_TRUE(met("d1000", "d1000"));
  EXPECT_TRUE(met("b", "b"));
  EXPECT_FALSE(met("b", "b0"));
}

TEST(TagCondition, FollowsTheRuleForAnyCodes) {
  std::mt19937 random(9);
  const auto codes = [&random] {
    static const std::vector<std::string> endings{"0", "1", "7", "07", "63", "64", "", "x", "1x"};
    std::string stored;
    for (unsigned count = static_cast<unsigned>(random()) % 7; count > 0; --count)
      stored += "abcde"[random() % 5] + endings[random() % endings.size()] + "|";
    return stored;
  };
  int passed = 0;
  for (int round = 0; round < 20000; ++round) {
    const Codes wanted(codes());
    const Codes tags(codes());
    const bool expected = met_word_for_word(wanted.texts(), tags.texts());
    ASSERT_EQ(TagCondition(wanted.list()).met_by(tags.list()), expected);
    passed += expected ? 1 : 0;
  }
  EXPECT_GT(passed, 2000);
  EXPECT_LT(passed, 18000);
}

}  // namespace
}  // namespace velkor
