/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/vocabulary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "parts_fixture.h"

namespace velkor::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class VocabularyTest : public PartsTest {};

TEST_F(VocabularyTest, CategoriesByNameOrNumber) {
  EXPECT_EQ(category_number("Beeld"), 0);
  EXPECT_EQ(category_number("applicaties"), 3);
  EXPECT_EQ(category_number("1"), 1);
  for (const char *text : {"", "4", "-1", "Beel", "1x"})
    EXPECT_THAT(usage_error_of([&] { category_number(text); }), HasSubstr("Beeld, Geluid"));
}

TEST_F(VocabularyTest, SubCategoriesBelongToTheirCategory) {
  EXPECT_EQ(sub_category_number(0, "HDTV"), 4);
  EXPECT_EQ(sub_category_number(2, "linux"), 2);
  EXPECT_EQ(sub_category_number(1, "4"), 4);
  EXPECT_THAT(usage_error_of([] { sub_category_number(1, "5"); }), HasSubstr("Lossless"));
  EXPECT_THAT(usage_error_of([] { sub_category_number(1, "DivX"); }), HasSubstr("MP3"));
}

TEST_F(VocabularyTest, StatesByWordOrNumber) {
  EXPECT_THAT(state_numbers("spot"), ElementsAre(-1));
  EXPECT_THAT(state_numbers("Verwijderd"), ElementsAre(-3, -2));
  EXPECT_THAT(state_numbers("-2"), ElementsAre(-2));
  EXPECT_THAT(state_numbers("Bezig met uploaden"), ElementsAre(2));
  EXPECT_THAT(usage_error_of([] { state_numbers("-4"); }), HasSubstr("Ready"));
}

TEST_F(VocabularyTest, NewsgroupsByNumberFullOrShortName) {
  EXPECT_EQ(newsgroup_id("7"), 7u);
  EXPECT_EQ(newsgroup_id("99"), 99u);
  EXPECT_EQ(newsgroup_id("alt.binaries.tv"), 7u);
  EXPECT_EQ(newsgroup_id("A.B.TV"), 7u);
  EXPECT_EQ(newsgroup_id("comp.os"), 12u);
  EXPECT_THAT(usage_error_of([] { newsgroup_id("a.b.x"); }), HasSubstr("a.b.x"));
  EXPECT_THAT(usage_error_of([] { newsgroup_id("-1"); }), HasSubstr("-1"));
  EXPECT_EQ(newsgroup_name(7), "a.b.tv");
  EXPECT_EQ(newsgroup_name(99), "99");
}

TEST_F(VocabularyTest, TagsByCodeOrName) {
  EXPECT_EQ(tag_choice(0, "DivX").code, "a0");
  EXPECT_EQ(tag_choice(1, "a0").code, "a0");
  EXPECT_EQ(tag_choice(0, "erotiek (bi)").code, "d26");
  EXPECT_EQ(tag_choice(-1, "d12").code, "d12");
  EXPECT_EQ(tag_choice(-1, "d12").category, -1);
  EXPECT_THAT(usage_error_of([] { tag_choice(2, "d0"); }), HasSubstr("d0"));
  EXPECT_THAT(usage_error_of([] { tag_choice(-1, "none"); }), HasSubstr("none"));
}

TEST_F(VocabularyTest, ANameInOneCategoryOnlyBringsItsCategory) {
  EXPECT_EQ(tag_choice(-1, "DivX").category, 0);
  EXPECT_EQ(tag_choice(-1, "Browsers").category, 3);
  EXPECT_THAT(usage_error_of([] { tag_choice(-1, "Linux"); }), HasSubstr("several categories"));
}

TEST_F(VocabularyTest, ANameInSeveralGroupsNeedsItsGroup) {
  EXPECT_THAT(usage_error_of([] { tag_choice(0, "Anders"); }), HasSubstr("several codes"));
  EXPECT_EQ(tag_choice(0, "Genre/Anders").code, "d27");
  EXPECT_EQ(tag_choice(0, "bron/anders").code, "b5");
}

}  // namespace
}  // namespace velkor::ctl
