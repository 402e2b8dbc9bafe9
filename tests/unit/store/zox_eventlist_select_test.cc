/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What filters accept, without the filtered set. */
#include <velkor/zox_eventlist.h>

#include <array>
#include <memory>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_groups.h>

#include "filter/filter_record.h"
#include "store/filter_pass.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

using Ids = std::vector<gint32>;

OwnedEvent posting_of(gint32 postId, const char *title, gint32 category, const char *groups = "3") {
  OwnedEvent event = basic_event(postId);
  replace_string(event->title, g_string_new(title));
  event->cat = category;
  zox_splitted_list_free(&event->groups);
  event->groups = zox_splitted_list_split(groups);
  return event;
}

class Selection : public EventlistTest {
protected:
  Selection() {
    for (const auto &[postId, title, category, groups] :
         {std::tuple(30, "rode auto", 0, "3"), std::tuple(10, "blauwe auto", 1, "4"),
          std::tuple(20, "rode fiets", 1, "3")}) {
      const OwnedEvent event = posting_of(postId, title, category, groups);
      zox_eventlist_add_or_replace_event(list, event.get());
    }
  }

  static OwnedFilter titled(const char *text) {
    OwnedFilter filter(zox_filter_new_filter());
    filter->titleSearch = g_string_new(text);
    return filter;
  }

  Ids select(const ZoxFilter *filter) {
    guint32 count = 99;
    const std::unique_ptr<gint32, ReleaseWith<g_free>> ids(
        zox_eventlist_select(list, filter, &count));
    return ids ? Ids(ids.get(), ids.get() + count) : Ids();
  }

  Ids visited(const ZoxFilter *filter) {
    Ids ids;
    zox_eventlist_visit_matches(
        list, filter,
        [](const ZoxEvent *event, gpointer data) {
          static_cast<Ids *>(data)->push_back(event->postId);
        },
        &ids);
    return ids;
  }
};

TEST_F(Selection, IsInTheOrderOfTheIds) {
  EXPECT_THAT(select(nullptr), ElementsAre(10, 20, 30));
  EXPECT_THAT(select(titled("rode").get()), ElementsAre(20, 30));
}

TEST_F(Selection, OfNothingIsNull) {
  guint32 count = 99;
  EXPECT_EQ(zox_eventlist_select(list, titled("boot").get(), &count), nullptr);
  EXPECT_EQ(count, 0U);
}

TEST_F(Selection, OfAnIdIsThatPostingAlone) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->postId = 20;
  EXPECT_THAT(select(filter.get()), ElementsAre(20));
  filter->postId = 21;
  EXPECT_THAT(select(filter.get()), IsEmpty());
}

TEST_F(Selection, TestsNewsgroupsAgainstTheFiltersOwnList) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->groupIdList = g_slist_prepend(nullptr, g_string_new("4"));
  EXPECT_THAT(select(filter.get()), ElementsAre(10));
  EXPECT_EQ(groupIds, nullptr);
}

TEST_F(Selection, LeavesTheViewAlone) {
  filter_entries(list, *titled("auto"));
  select(titled("fiets").get());
  visited(titled("fiets").get());
  EXPECT_EQ(zox_eventlist_get_count(list, 1), 2U);
  const OwnedFilter active(zox_eventlist_get_filter(list));
  EXPECT_STREQ(active->titleSearch->str, "auto");
}

TEST_F(Selection, VisitsWhatTheFilterAccepts) {
  EXPECT_THAT(visited(titled("auto").get()), UnorderedElementsAre(10, 30));
  EXPECT_THAT(visited(nullptr), UnorderedElementsAre(10, 20, 30));
}

TEST_F(Selection, CountsSeveralFiltersWithinOne) {
  const OwnedFilter cars = titled("auto");
  const OwnedFilter bicycles = titled("fiets");
  GSList *filters = g_slist_append(g_slist_append(nullptr, cars.get()), bicycles.get());
  const OwnedCells cells(filters);
  std::array<guint32, 2> counts{77, 77};
  EXPECT_EQ(zox_eventlist_count_matches(list, nullptr, filters, counts.data()), 3U);
  EXPECT_THAT(counts, ElementsAre(2, 1));
  EXPECT_EQ(zox_eventlist_count_matches(list, titled("rode").get(), filters, counts.data()), 2U);
  EXPECT_THAT(counts, ElementsAre(1, 1));
  EXPECT_EQ(zox_eventlist_count_matches(list, titled("rode").get(), nullptr, nullptr), 2U);
}

TEST_F(Selection, CountsTheCategoriesWithoutTheirCounters) {
  std::vector<guint32> counts(g_slist_length(core->categories), 77);
  EXPECT_EQ(zox_eventlist_count_categories(list, titled("rode").get(), counts.data()), 2U);
  std::size_t number = 0;
  for (const ZoxCategory *category : Items<const ZoxCategory>(core->categories)) {
    EXPECT_EQ(counts[number], category->id == 0 || category->id == 1 ? 1U : 0U) << number;
    EXPECT_EQ(category->count, 0);
    ++number;
  }
}

}  // namespace
}  // namespace velkor::test
