/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_tags.h>

#include <set>
#include <string>

#include <velkor/zox_string.h>

#include "support/owned.h"
#include "support/slist.h"
#include "tests/support/layer_fixtures.h"

namespace velkor {
namespace {

class ZoxTags : public test::TableTest {
protected:
  ZoxTags() { zox_tags_init(); }

  static const ZoxTag *find(const char *code, gint32 category) {
    const OwnedString text(zox_string_new(code));
    return zox_tag_find(text.get(), category);
  }

  static std::string name_of(const char *code, gint32 category) {
    const ZoxTag *tag = find(code, category);
    return tag == nullptr ? "(none)" : tag->name->str;
  }
};

/** One line a tag: category, code ("-" for the head of a group), name. */
std::string printed_vocabulary() {
  std::string text;
  for (const ZoxTag *tag : Items<ZoxTag>(core->tags)) {
    const std::string code = tag->code == nullptr ? "-" : tag->code->str;
    text += std::to_string(tag->category) + " " + code + " " + tag->name->str + "\n";
  }
  return text;
}

TEST_F(ZoxTags, HoldTheVocabularyInBuildOrder) {
  EXPECT_EQ(g_slist_length(core->tags), 157U);
  EXPECT_EQ(printed_vocabulary(), test::read_file(VELKOR_TEST_DIR "/golden/tags.txt"));
}

TEST_F(ZoxTags, EveryTagPointsAtTheLatestHead) {
  const ZoxTag *head = nullptr;
  for (const ZoxTag *tag : Items<ZoxTag>(core->tags)) {
    if (tag->code == nullptr) {
      EXPECT_EQ(tag->group, nullptr);
      head = tag;
    }
    EXPECT_EQ(tag->group, tag->code == nullptr ? nullptr : head);
  }
}

TEST_F(ZoxTags, CodeAndCategoryAreUniqueTogether) {
  std::set<std::pair<guint32, std::string>> seen;
  for (const ZoxTag *tag : Items<ZoxTag>(core->tags)) {
    if (tag->code != nullptr) {
      EXPECT_TRUE(seen.emplace(tag->category, tag->code->str).second) << tag->code->str;
    }
  }
  EXPECT_EQ(seen.size(), 144U);
}

TEST_F(ZoxTags, TheSameCodeMeansAnotherThingInAnotherCategory) {
  EXPECT_EQ(name_of("a0", 0), "DivX");
  EXPECT_EQ(name_of("a0", 1), "MP3");
  EXPECT_EQ(name_of("a0", 3), "Windows");
  EXPECT_EQ(name_of("c2", 1), "92kbit");
}

TEST_F(ZoxTags, FoundTagKnowsItsGroup) {
  const ZoxTag *tag = find("d23", 0);
  ASSERT_NE(tag, nullptr);
  EXPECT_STREQ(tag->group->name->str, "Genre");
}

TEST_F(ZoxTags, UnknownCodesAreNotFound) {
  EXPECT_EQ(find("d0", 2), nullptr);
  EXPECT_EQ(find("c10", 2), nullptr);
  EXPECT_EQ(find("a0", 4), nullptr);
  EXPECT_EQ(find("a0", -1), nullptr);
  EXPECT_EQ(find("", 0), nullptr);
  EXPECT_EQ(zox_tag_find(nullptr, 0), nullptr);
}

TEST_F(ZoxTags, CodesAreCaseSensitive) {
  EXPECT_EQ(find("A0", 0), nullptr);
}

TEST_F(ZoxTags, CategoryListsItsGroupsWithTheirHeads) {
  const std::array<unsigned, 4> lengths{50, 45, 28, 34};
  for (guint32 category = 0; category < lengths.size(); ++category) {
    const OwnedCells tags(zox_tag_get_tags_in_cat(category));
    EXPECT_EQ(g_slist_length(tags.get()), lengths.at(category));
  }
  const OwnedCells applications(zox_tag_get_tags_in_cat(3));
  const auto *first = static_cast<const ZoxTag *>(applications->data);
  EXPECT_STREQ(first->name->str, "Platform");
  EXPECT_EQ(first->group, nullptr);
}

TEST_F(ZoxTags, OtherCategoriesHaveNone) {
  EXPECT_EQ(zox_tag_get_tags_in_cat(4), nullptr);
}

TEST_F(ZoxTags, GetHandsOutTheListItself) {
  EXPECT_EQ(zox_get_tags(), core->tags);
}

TEST_F(ZoxTags, FreeLeavesNoneAndInitMayFollow) {
  zox_tags_free();
  EXPECT_EQ(core->tags, nullptr);
  EXPECT_EQ(zox_get_tags(), nullptr);
  EXPECT_EQ(zox_tag_get_tags_in_cat(0), nullptr);
  EXPECT_EQ(find("a0", 0), nullptr);
  zox_tags_free();
  zox_tags_init();
  EXPECT_EQ(g_slist_length(core->tags), 157U);
}

using ZoxTagsDeathTest = ZoxTags;

TEST_F(ZoxTagsDeathTest, InitTwice) {
  EXPECT_DEATH(zox_tags_init(), "zox_tags_init: assertion failed: \\(core->tags == NULL\\)");
}

TEST(ZoxTagsWithoutCoreDeathTest, NeedACore) {
  EXPECT_DEATH(zox_tags_init(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_tags_free(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_get_tags(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_tag_get_tags_in_cat(0), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_tag_find(nullptr, 0), "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
