/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Postings and filters for the filter tests. */
#ifndef VELKOR_TESTS_SUPPORT_FILTER_FIXTURE_H
#define VELKOR_TESTS_SUPPORT_FILTER_FIXTURE_H

#include <initializer_list>
#include <memory>

#include <velkor/zox_category.h>
#include <velkor/zox_event.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "filter/filter_record.h"
#include "support/owned_records.h"
#include "tests/support/layer_fixtures.h"

namespace velkor::test {

/** A posting with a main category and a title only. */
inline OwnedEvent posting(gint32 cat, const char *title = nullptr) {
  OwnedEvent event(zox_event_new());
  event->cat = cat;
  event->title = zox_string_new(title);
  return event;
}

inline OwnedFilter filter_of(gint32 cat, const char *name = nullptr) {
  OwnedFilter filter(zox_filter_new_filter());
  filter->cat = cat;
  filter->name = zox_string_new(name);
  return filter;
}

/** Sets the newsgroup ids, given in stored form, for its own lifetime. */
class NewsgroupIdSet {
public:
  explicit NewsgroupIdSet(const char *ids) {
    ZoxSplittedList *list = zox_splitted_list_split(ids);
    zox_group_set_group_id_list(list);
    zox_splitted_list_free(&list);
  }
  ~NewsgroupIdSet() { zox_group_unset_group_id_list(); }
  NewsgroupIdSet(const NewsgroupIdSet &) = delete;
  NewsgroupIdSet &operator=(const NewsgroupIdSet &) = delete;
};

/** A core with an empty filter list. */
class FilterTest : public CategoryTest {
protected:
  FilterTest() { core->filterlist = zox_filterlist_new(); }

  static void add_filter(gint32 cat, const char *name = nullptr) {
    zox_filterlist_append_filter(core->filterlist, filter_of(cat, name).get());
  }

  /** Gives the user one filter for each of these main categories, and the tree for them. */
  static void keep(std::initializer_list<gint32> categories) {
    for (const gint32 cat : categories)
      add_filter(cat);
    zox_categories_init();
  }
};

}  // namespace velkor::test

#endif
