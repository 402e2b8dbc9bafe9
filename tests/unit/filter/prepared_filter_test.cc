/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/prepared_filter.h"

#include <random>
#include <string>

#include "tests/support/filter_fixture.h"

namespace velkor {
namespace {

using test::posting;

/** A user who keeps categories 0 and 2, and records made at random of a few values. */
class PreparedFilterTest : public test::FilterTest {
protected:
  PreparedFilterTest() { keep({0, 2, 2}); }

  bool one_in(unsigned count) { return random_() % count == 0; }
  gint32 below(unsigned bound) { return static_cast<gint32>(random_() % bound); }

  GString *some_text(std::string_view letters) {
    std::string text;
    for (gint32 left = below(5); left > 0; --left)
      text += letters[random_() % letters.size()];
    return zox_string_new(text.c_str());
  }
  GSList *some_list(char letter, unsigned bound) {
    std::string stored;
    for (gint32 left = below(4); left > 0; --left)
      stored += (letter == '\0' ? "" : std::string(1, letter)) + std::to_string(below(bound)) + "|";
    return zox_splitted_list_split(stored.c_str());
  }

  OwnedEvent some_posting() {
    OwnedEvent event = posting(below(4));
    event->postId = below(5);
    event->stamp = below(10);
    event->status = below(3) - 1;
    event->sCat = below(3);
    event->groups = some_list('\0', 9);
    event->tags = some_list('a', 4);
    if (!one_in(8))
      event->title = some_text("abAB");
    if (!one_in(8))
      event->poster = some_text("abAB");
    if (one_in(2))
      event->tag = some_text("ab  ");
    return event;
  }

  OwnedFilter some_filter() {
    OwnedFilter filter(zox_filter_new_filter());
    filter->sinceStamp = one_in(3) ? below(10) : 0;
    filter->postId = one_in(12) ? static_cast<guint32>(below(5)) : 0;
    filter->cat = one_in(3) ? below(4) : -1;
    filter->sCat = one_in(3) ? below(3) : -1;
    if (one_in(4))
      filter->statusList = g_slist_prepend(nullptr, GINT_TO_POINTER(below(3) - 1));
    if (one_in(3))
      filter->groupIdList = some_list('\0', 9);
    if (one_in(3))
      filter->titleSearch = some_text("ab");
    if (one_in(3))
      filter->posterSearch = some_text("ab");
    if (one_in(3))
      filter->tags = some_list('a', 4);
    if (one_in(4))
      filter->extraTag = some_text("ab");
    filter->useDateRange = one_in(4) ? 1 : 0;
    filter->dateFrom = below(5);
    filter->dateTo = 3 + below(7);
    return filter;
  }

private:
  std::mt19937 random_{10};
};

TEST_F(PreparedFilterTest, AcceptsWhatThePlainTestAccepts) {
  const test::NewsgroupIdSet ids("1|3|8|8");
  int accepted = 0;
  for (int round = 0; round < 1000; ++round) {
    const OwnedFilter filter = some_filter();
    const PreparedFilter prepared(*filter);
    for (int number = 0; number < 20; ++number) {
      const OwnedEvent event = some_posting();
      const bool expected = zox_filter_accepts(filter.get(), event.get(), 1) != FALSE;
      ASSERT_EQ(prepared.accepts(*event), expected);
      accepted += expected ? 1 : 0;
    }
  }
  EXPECT_GT(accepted, 500);
}

TEST_F(PreparedFilterTest, AcceptsNothingWithoutACategoryTree) {
  zox_categories_free();
  const OwnedFilter filter(zox_filter_new_filter());
  EXPECT_FALSE(PreparedFilter(*filter).accepts(*posting(0)));
}

using PreparedFilterDeathTest = PreparedFilterTest;

TEST_F(PreparedFilterDeathTest, NewsgroupConditionNeedsTheIdSet) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->groupIdList = zox_splitted_list_split("1");
  EXPECT_DEATH(PreparedFilter{*filter},
               "zox_group_id_is_in_list: assertion failed: \\(groupIds\\)");
}

}  // namespace
}  // namespace velkor
