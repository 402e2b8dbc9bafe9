/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filter.h>

#include <random>
#include <string>

#include "tests/support/filter_fixture.h"

namespace velkor {
namespace {

using test::posting;

/** A user who keeps category 0, a filter without conditions and a posting of that category. */
class ZoxFilterAccepts : public test::FilterTest {
protected:
  ZoxFilterAccepts() {
    keep({0});
    event->stamp = 1000;
    event->postId = 77;
    event->status = 0;
  }

  /** The number of the test that rejects the posting, or 0. */
  [[nodiscard]] gint32 rejected_by(guint32 groupMode = 0) const {
    const gint32 step = zox_filter_explain(filter.get(), event.get(), groupMode);
    EXPECT_EQ(zox_filter_accepts(filter.get(), event.get(), groupMode), step == 0);
    return step;
  }

  void set_tags(const char *filter_tags, const char *event_tags) const {
    zox_splitted_list_free(&filter->tags);
    zox_splitted_list_free(&event->tags);
    filter->tags = zox_splitted_list_split(filter_tags);
    event->tags = zox_splitted_list_split(event_tags);
  }

  void set_extra_tag(const std::string &wanted, const std::string &text) const {
    replace_string(filter->extraTag, zox_string_new(wanted.c_str()));
    replace_string(event->tag, zox_string_new(text.c_str()));
  }

  OwnedFilter filter{zox_filter_new_filter()};
  OwnedEvent event = posting(0, "Een Film (DivX)");
};

TEST_F(ZoxFilterAccepts, WithoutConditionsWhatTheUserKeeps) {
  EXPECT_EQ(rejected_by(), 0);
  event->cat = 1;
  EXPECT_EQ(rejected_by(), 10);
  event->cat = -1;
  EXPECT_EQ(rejected_by(), 10);
}

TEST_F(ZoxFilterAccepts, NothingWithoutACategoryTree) {
  zox_categories_free();
  EXPECT_EQ(rejected_by(), 10);
}

TEST_F(ZoxFilterAccepts, NothingThatOnlyAMainCategoryHolds) {
  auto *main = static_cast<ZoxCategory *>(core->categories->data);
  ASSERT_EQ(main->isMain, 1);
  main->id = 9;
  event->cat = 9;
  EXPECT_EQ(rejected_by(), 10);
  main->isMain = 0;
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, PostIdDecidesAlone) {
  filter->postId = 77;
  filter->cat = 3;
  filter->titleSearch = zox_string_new("staat er niet in");
  filter->tags = zox_splitted_list_split("a9");
  EXPECT_EQ(rejected_by(), 0);
  event->cat = 2;
  EXPECT_EQ(rejected_by(), 0);
  filter->postId = 78;
  EXPECT_EQ(rejected_by(), 1);
}

TEST_F(ZoxFilterAccepts, PostIdIsTestedAfterTheStampBound) {
  filter->postId = 77;
  filter->sinceStamp = 1001;
  EXPECT_EQ(rejected_by(), 1);
  filter->useDateRange = 1;
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, LowestStampIsInclusive) {
  filter->sinceStamp = 1000;
  EXPECT_EQ(rejected_by(), 0);
  filter->sinceStamp = 1001;
  EXPECT_EQ(rejected_by(), 1);
  filter->sinceStamp = 0;
  event->stamp = -5;
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, LowestStampYieldsToADateRange) {
  filter->sinceStamp = 5000;
  filter->useDateRange = 1;
  filter->dateFrom = 1000;
  filter->dateTo = 1000;
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, DateRangeIsInclusive) {
  filter->useDateRange = 1;
  filter->dateFrom = 999;
  filter->dateTo = 1000;
  EXPECT_EQ(rejected_by(), 0);
  filter->dateTo = 999;
  EXPECT_EQ(rejected_by(), 7);
  filter->dateFrom = 1001;
  filter->dateTo = 2000;
  EXPECT_EQ(rejected_by(), 7);
  filter->useDateRange = 0;
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, Category) {
  filter->cat = 0;
  EXPECT_EQ(rejected_by(), 0);
  filter->cat = 1;
  EXPECT_EQ(rejected_by(), 2);
}

TEST_F(ZoxFilterAccepts, SubCategoryOnlyWithinACategory) {
  event->sCat = 4;
  filter->sCat = 3;
  EXPECT_EQ(rejected_by(), 0);
  filter->cat = 0;
  EXPECT_EQ(rejected_by(), 2);
  filter->sCat = 4;
  EXPECT_EQ(rejected_by(), 0);
  filter->sCat = -1;
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, StatusIsOneOfThoseListed) {
  filter->statusList = g_slist_prepend(filter->statusList, GINT_TO_POINTER(-3));
  EXPECT_EQ(rejected_by(), 3);
  event->status = -3;
  EXPECT_EQ(rejected_by(), 0);
  event->status = 0;
  filter->statusList = g_slist_append(filter->statusList, GINT_TO_POINTER(0));
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, NewsgroupsAgainstTheFiltersList) {
  filter->groupIdList = zox_splitted_list_split("3|12");
  EXPECT_EQ(rejected_by(0), 4);
  event->groups = zox_splitted_list_split("1|2");
  EXPECT_EQ(rejected_by(0), 4);
  zox_splitted_list_free(&event->groups);
  event->groups = zox_splitted_list_split("1|012x");
  EXPECT_EQ(rejected_by(0), 0);
}

TEST_F(ZoxFilterAccepts, NewsgroupsAgainstTheIdSet) {
  filter->groupIdList = zox_splitted_list_split("1");
  const test::NewsgroupIdSet set("3|12");
  EXPECT_EQ(rejected_by(1), 4);
  event->groups = zox_splitted_list_split("1|2");
  EXPECT_EQ(rejected_by(1), 4);
  EXPECT_EQ(rejected_by(0), 0);
  zox_splitted_list_free(&event->groups);
  event->groups = zox_splitted_list_split("2|12");
  EXPECT_EQ(rejected_by(1), 0);
  EXPECT_EQ(rejected_by(2), 0);
}

TEST_F(ZoxFilterAccepts, NewsgroupsOnlyWhenWanted) {
  event->groups = zox_splitted_list_split("1");
  EXPECT_EQ(rejected_by(0), 0);
  EXPECT_EQ(rejected_by(1), 0);
}

TEST_F(ZoxFilterAccepts, TitleRegardlessOfCase) {
  filter->titleSearch = zox_string_new("divx");
  EXPECT_EQ(rejected_by(), 0);
  replace_string(filter->titleSearch, zox_string_new("EEN film"));
  EXPECT_EQ(rejected_by(), 0);
  replace_string(filter->titleSearch, zox_string_new("xvid"));
  EXPECT_EQ(rejected_by(), 5);
  replace_string(filter->titleSearch, zox_string_new(""));
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, OnlyTheLettersAToZLoseTheirCase) {
  replace_string(event->title, zox_string_new("caf\u00e9"));
  filter->titleSearch = zox_string_new("CAF\u00e9");
  EXPECT_EQ(rejected_by(), 0);
  replace_string(filter->titleSearch, zox_string_new("CAF\u00c9"));
  EXPECT_EQ(rejected_by(), 5);
}

TEST_F(ZoxFilterAccepts, PosterRegardlessOfCase) {
  event->poster = zox_string_new("Jan de Tester");
  filter->posterSearch = zox_string_new("DE TEST");
  EXPECT_EQ(rejected_by(), 0);
  replace_string(filter->posterSearch, zox_string_new("piet"));
  EXPECT_EQ(rejected_by(), 6);
}

TEST_F(ZoxFilterAccepts, MissingTitleAndPosterAreSearchedAsEmpty) {
  replace_string(event->title, nullptr);
  filter->titleSearch = zox_string_new("x");
  EXPECT_EQ(rejected_by(), 5);
  replace_string(filter->titleSearch, zox_string_new(""));
  filter->posterSearch = zox_string_new("x");
  EXPECT_EQ(rejected_by(), 6);
  replace_string(filter->posterSearch, zox_string_new(""));
  EXPECT_EQ(rejected_by(), 0);
}

TEST_F(ZoxFilterAccepts, TagsOfOneGroupAreAlternatives) {
  set_tags("b0|b1", "a3|b1");
  EXPECT_EQ(rejected_by(), 0);
  set_tags("b0|b1", "a3");
  EXPECT_EQ(rejected_by(), 8);
  set_tags("b0|b1", "");
  EXPECT_EQ(rejected_by(), 8);
}

TEST_F(ZoxFilterAccepts, TagGroupsMustAllBeMet) {
  set_tags("a0|a1|d23", "a1|d23");
  EXPECT_EQ(rejected_by(), 0);
  set_tags("a0|a1|d23", "a0");
  EXPECT_EQ(rejected_by(), 8);
  set_tags("d1|c1|b1|a1", "a1|b1|c1|d1");
  EXPECT_EQ(rejected_by(), 0);
  set_tags("d1|c1|b1|a1", "a1|b1|c1|d2");
  EXPECT_EQ(rejected_by(), 8);
}

TEST_F(ZoxFilterAccepts, TagCodesMatchExactly) {
  set_tags("a1", "a10");
  EXPECT_EQ(rejected_by(), 8);
  set_tags("a1", "A1");
  EXPECT_EQ(rejected_by(), 8);
}

TEST_F(ZoxFilterAccepts, TagCodesOfOtherLettersHaveNoEffect) {
  set_tags("e5", "a1");
  EXPECT_EQ(rejected_by(), 0);
  set_tags("e5", "");
  EXPECT_EQ(rejected_by(), 0);
  set_tags("A1|1a|`0", "");
  EXPECT_EQ(rejected_by(), 0);
  set_tags("e5|a1", "e5");
  EXPECT_EQ(rejected_by(), 8);
}

TEST_F(ZoxFilterAccepts, TagConditionAlone) {
  filter->cat = 3;
  EXPECT_TRUE(zox_filter_accepts_tags(filter.get(), event.get()));
  set_tags("a0|d1", "d1|a0");
  EXPECT_TRUE(zox_filter_accepts_tags(filter.get(), event.get()));
  set_tags("a0|d1", "d1");
  EXPECT_FALSE(zox_filter_accepts_tags(filter.get(), event.get()));
}

TEST_F(ZoxFilterAccepts, ExtraTagIsAWholeWord) {
  set_extra_tag("HD", "720p HD x264");
  EXPECT_EQ(rejected_by(), 0);
  set_extra_tag("HD", "HDTV");
  EXPECT_EQ(rejected_by(), 9);
  set_extra_tag("hd", "HD");
  EXPECT_EQ(rejected_by(), 0);
  set_extra_tag("x264", "720p\tx264");
  EXPECT_EQ(rejected_by(), 9);
}

TEST_F(ZoxFilterAccepts, ExtraTagNeedsATagText) {
  filter->extraTag = zox_string_new("HD");
  EXPECT_EQ(rejected_by(), 9);
  replace_string(filter->extraTag, zox_string_new(""));
  EXPECT_EQ(rejected_by(), 9);
}

TEST_F(ZoxFilterAccepts, ExtraTagMayHoldBlanks) {
  set_extra_tag("HD x264", "720p hd X264 nl");
  EXPECT_EQ(rejected_by(), 0);
  set_extra_tag("HD  x264", "HD x264");
  EXPECT_EQ(rejected_by(), 9);
}

TEST_F(ZoxFilterAccepts, EmptyExtraTagMeansTwoBlanks) {
  set_extra_tag("", "");
  EXPECT_EQ(rejected_by(), 0);
  set_extra_tag("", "HD");
  EXPECT_EQ(rejected_by(), 9);
  set_extra_tag("", "HD  x264");
  EXPECT_EQ(rejected_by(), 0);
  set_extra_tag("", "HD ");
  EXPECT_EQ(rejected_by(), 0);
}

/** The extra tag's test as it is described: upper-cased copies with a blank on either side. */
bool naive_extra_tag(const std::string &wanted, const std::string &text) {
  const OwnedText upper_wanted(zox_string_upcase((" " + wanted + " ").c_str()));
  const OwnedText upper_text(zox_string_upcase((" " + text + " ").c_str()));
  return std::string(upper_text.get()).find(upper_wanted.get()) != std::string::npos;
}

class RandomText {
public:
  std::string operator()(std::size_t max_length) {
    static constexpr std::string_view alphabet = "aAbB  .";
    std::string text(random_() % (max_length + 1), ' ');
    for (char &letter : text)
      letter = alphabet[random_() % alphabet.size()];
    return text;
  }

private:
  std::mt19937 random_{20240229};
};

TEST_F(ZoxFilterAccepts, ExtraTagAgreesWithItsDescription) {
  RandomText text;
  unsigned accepted = 0;
  constexpr unsigned rounds = 20000;
  for (unsigned round = 0; round < rounds; ++round) {
    const std::string wanted = text(4);
    const std::string words = text(10);
    set_extra_tag(wanted, words);
    const bool expected = naive_extra_tag(wanted, words);
    ASSERT_EQ(rejected_by(), expected ? 0 : 9) << "'" << wanted << "' in '" << words << "'";
    accepted += expected ? 1 : 0;
  }
  EXPECT_GT(accepted, rounds / 20);
  EXPECT_LT(accepted, rounds - rounds / 20);
}

TEST_F(ZoxFilterAccepts, FirstFailingTestIsNamed) {
  event->cat = 1;
  filter->useDateRange = 1;
  filter->dateFrom = 2000;
  filter->dateTo = 3000;
  set_extra_tag("x", "y");
  set_tags("a1", "");
  filter->posterSearch = zox_string_new("x");
  filter->titleSearch = zox_string_new("x-men");
  filter->groupIdList = zox_splitted_list_split("1");
  filter->statusList = g_slist_prepend(nullptr, GINT_TO_POINTER(3));
  filter->cat = 0;
  EXPECT_EQ(rejected_by(), 2);
  filter->cat = -1;
  EXPECT_EQ(rejected_by(), 3);
  g_slist_free(std::exchange(filter->statusList, nullptr));
  EXPECT_EQ(rejected_by(), 4);
  zox_splitted_list_free(&filter->groupIdList);
  EXPECT_EQ(rejected_by(), 5);
  replace_string(filter->titleSearch, nullptr);
  EXPECT_EQ(rejected_by(), 6);
  replace_string(filter->posterSearch, nullptr);
  EXPECT_EQ(rejected_by(), 7);
  filter->useDateRange = 0;
  EXPECT_EQ(rejected_by(), 8);
  set_tags("", "");
  EXPECT_EQ(rejected_by(), 9);
  replace_string(filter->extraTag, nullptr);
  EXPECT_EQ(rejected_by(), 10);
}

using ZoxFilterAcceptsDeathTest = ZoxFilterAccepts;

TEST_F(ZoxFilterAcceptsDeathTest, GroupModeNeedsTheIdSet) {
  filter->groupIdList = zox_splitted_list_split("1");
  event->groups = zox_splitted_list_split("1");
  EXPECT_DEATH(zox_filter_accepts(filter.get(), event.get(), 1),
               "assertion failed: \\(groupIds\\)");
}

TEST_F(ZoxFilterAcceptsDeathTest, NeedsBoth) {
  EXPECT_DEATH(zox_filter_accepts(nullptr, event.get(), 0),
               "zox_filter_accepts: assertion failed: \\(filter\\)");
  EXPECT_DEATH(zox_filter_accepts(filter.get(), nullptr, 0),
               "zox_filter_accepts: assertion failed: \\(event\\)");
}

TEST(ZoxFilterAcceptsWithoutCoreDeathTest, NeedsACore) {
  const OwnedFilter filter(zox_filter_new_filter());
  EXPECT_DEATH(zox_filter_accepts(filter.get(), posting(0).get(), 0),
               "zox_filter_accepts: assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
