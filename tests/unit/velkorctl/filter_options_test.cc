/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/filter_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>

#include "parts_fixture.h"
#include "support/slist.h"

namespace velkor::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::int64_t now = 1774864800;

using Given = std::vector<std::pair<std::string, std::vector<std::string>>>;

class FilterOptionsTest : public PartsTest {
protected:
  static OwnedFilter filter(const Given &given) {
    Arguments arguments;
    for (const auto &[name, values] : given)
      arguments.set(name, values);
    return filter_of(arguments, now);
  }

  static std::string error(const Given &given) {
    return usage_error_of([&] { filter(given); });
  }

  static std::vector<std::string> texts(const GSList *list) {
    std::vector<std::string> result;
    for (const GString *text : Items<GString>(list))
      result.emplace_back(text->str);
    return result;
  }

  static std::vector<int> numbers(const GSList *list) {
    std::vector<int> result;
    for (const GSList *cell = list; cell != nullptr; cell = cell->next)
      result.push_back(GPOINTER_TO_INT(cell->data));
    return result;
  }
};

TEST_F(FilterOptionsTest, WithoutOptionsNothingIsAsked) {
  const OwnedFilter made = filter({});
  EXPECT_EQ(made->cat, -1);
  EXPECT_EQ(made->sCat, -1);
  EXPECT_EQ(made->titleSearch, nullptr);
  EXPECT_EQ(made->tags, nullptr);
  EXPECT_EQ(made->groupIdList, nullptr);
  EXPECT_EQ(made->statusList, nullptr);
  EXPECT_EQ(made->sinceStamp, 0);
  EXPECT_EQ(made->useDateRange, 0);
  EXPECT_EQ(made->sortMode, 0);
  EXPECT_EQ(made->sortAscending, 0);
}

TEST_F(FilterOptionsTest, TextsAreTakenAsTheyStand) {
  const OwnedFilter made =
      filter({{"--title", {"big show"}}, {"--poster", {"ann"}}, {"--free-tag", {"HD"}}});
  EXPECT_STREQ(made->titleSearch->str, "big show");
  EXPECT_STREQ(made->posterSearch->str, "ann");
  EXPECT_STREQ(made->extraTag->str, "HD");
}

TEST_F(FilterOptionsTest, CategoryAndSubCategoryByName) {
  const OwnedFilter made = filter({{"--category", {"geluid"}}, {"--sub-category", {"OGG"}}});
  EXPECT_EQ(made->cat, 1);
  EXPECT_EQ(made->sCat, 3);
  EXPECT_THAT(error({{"--sub-category", {"OGG"}}}), HasSubstr("--category"));
}

TEST_F(FilterOptionsTest, TagsNewsgroupsAndStatesRepeat) {
  const OwnedFilter made = filter({{"--category", {"0"}},
                                   {"--tag", {"DivX", "d3"}},
                                   {"--newsgroup", {"a.b.tv", "12"}},
                                   {"--status", {"ready", "verwijderd"}}});
  EXPECT_THAT(texts(made->tags), ElementsAre("a0", "d3"));
  EXPECT_THAT(texts(made->groupIdList), ElementsAre("7", "12"));
  EXPECT_THAT(numbers(made->statusList), ElementsAre(0, -3, -2));
}

TEST_F(FilterOptionsTest, ATagBringsItsCategory) {
  EXPECT_EQ(filter({{"--tag", {"DivX"}}})->cat, 0);
  EXPECT_THAT(error({{"--tag", {"DivX", "Browsers"}}}), HasSubstr("Browsers"));
}

TEST_F(FilterOptionsTest, SinceTakesTimesAndAges) {
  EXPECT_EQ(filter({{"--since", {"3d"}}})->sinceStamp, now - 3 * 86400);
  EXPECT_THAT(error({{"--since", {"soon"}}}), HasSubstr("soon"));
}

TEST_F(FilterOptionsTest, NewMeansSinceThePreviousUpdate) {
  core->config->prevCheck = 1700000000;
  EXPECT_EQ(filter({{"--new", {}}})->sinceStamp, 1700000000);
  EXPECT_NE(error({{"--new", {}}, {"--since", {"3d"}}}), "");
}

TEST_F(FilterOptionsTest, ADateRangeMayBeOpen) {
  const OwnedFilter open = filter({{"--from", {"2026-01-31"}}});
  EXPECT_EQ(open->useDateRange, 1);
  EXPECT_EQ(open->dateFrom, 1769814000);
  EXPECT_EQ(open->dateTo, G_MAXINT64);
  const OwnedFilter day = filter({{"--from", {"2026-01-31"}}, {"--to", {"2026-01-31"}}});
  EXPECT_EQ(day->dateTo - day->dateFrom, 86399);
  EXPECT_NE(error({{"--from", {"2026-02-01"}}, {"--to", {"2026-01-31"}}}), "");
  EXPECT_NE(error({{"--since", {"3d"}}, {"--to", {"2026-01-31"}}}), "");
}

TEST_F(FilterOptionsTest, OrderAndDirection) {}

TEST_F(FilterOptionsTest, ASavedFilterByName) {
  const OwnedFilter made = filter({{"--filter", {"divx"}}, {"--title", {"x"}}});
  EXPECT_STREQ(made->name->str, "DivX");
  EXPECT_EQ(made->cat, 0);
  EXPECT_THAT(texts(made->tags), ElementsAre("a0"));
  EXPECT_STREQ(made->titleSearch->str, "x");
  EXPECT_THAT(error({{"--filter", {"none"}}}), HasSubstr("none"));
}

TEST_F(FilterOptionsTest, TheCategorySelectsOneOfSeveralFilters) {
  EXPECT_THAT(error({{"--filter", {"Windows"}}}), HasSubstr("#2 (Spelletjes), #3 (Applicaties)"));
  EXPECT_EQ(filter({{"--filter", {"#3"}}})->cat, 3);
  EXPECT_EQ(filter({{"--filter", {"Windows"}}, {"--category", {"Spelletjes"}}})->cat, 2);
  EXPECT_THAT(error({{"--filter", {"#4"}}}), HasSubstr("#4"));
}

TEST_F(FilterOptionsTest, TagsReplaceThoseOfTheSavedFilter) {
  EXPECT_THAT(texts(filter({{"--filter", {"DivX"}}, {"--tag", {"WMV"}}})->tags), ElementsAre("a1"));
}

}  // namespace
}  // namespace velkor::ctl
