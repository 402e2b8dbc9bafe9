/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filterlist.h>

#include <string>
#include <thread>

#include "support/slist.h"
#include "tests/support/filter_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using test::filter_of;
using ZoxFilterlist = test::FilterTest;

gint append_name(ZoxFilter *filter, gpointer userData) {
  *static_cast<std::string *>(userData) += std::string(filter->name->str) + " ";
  return 0;
}

std::string names_of(ZOXFilterlist *list) {
  std::string names;
  zox_filterlist_foreach(list, 1, append_name, &names);
  return names;
}

G_GNUC_BEGIN_IGNORE_DEPRECATIONS
bool can_be_read(ZOXFilterlist &list) {
  if (!g_static_rw_lock_reader_trylock(&list.lock))
    return false;
  g_static_rw_lock_reader_unlock(&list.lock);
  return true;
}
G_GNUC_END_IGNORE_DEPRECATIONS

TEST_F(ZoxFilterlist, TypeDerivesDirectlyFromTheBaseClass) {
  EXPECT_STREQ(g_type_name(zox_filterlist_get_type()), "ZOXFilterlist");
  EXPECT_EQ(g_type_parent(zox_filterlist_get_type()), G_TYPE_OBJECT);
}

TEST_F(ZoxFilterlist, IsEmptyAtFirst) {
  EXPECT_EQ(core->filterlist->filters, nullptr);
  EXPECT_EQ(core->filterlist->activeFilter, nullptr);
  EXPECT_EQ(names_of(core->filterlist), "");
}

TEST_F(ZoxFilterlist, AppendKeepsACopyAtTheEnd) {
  add_filter(0, "een");
  const OwnedFilter filter = filter_of(1, "twee");
  zox_filterlist_append_filter(core->filterlist, filter.get());
  replace_string(filter->name, zox_string_new("anders"));
  EXPECT_EQ(names_of(core->filterlist), "een twee ");
}

TEST_F(ZoxFilterlist, AppendDoesNotSave) {
  add_filter(0, "een");
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.filters")));
}

TEST_F(ZoxFilterlist, ForeachMayChangeFiltersInPlace) {
  add_filter(0, "een");
  zox_filterlist_foreach(
      core->filterlist, 0,
      [](ZoxFilter *filter, gpointer) {
        replace_string(filter->name, zox_string_new("ander"));
        return 0;
      },
      nullptr);
  EXPECT_EQ(names_of(core->filterlist), "ander ");
}

TEST_F(ZoxFilterlist, ForeachSharesItsLockOnlyWhenReading) {
  add_filter(0, "een");
  const auto try_to_read = [](ZoxFilter *, gpointer userData) {
    std::thread([&] { *static_cast<bool *>(userData) = can_be_read(*core->filterlist); }).join();
    return 0;
  };
  bool readable = false;
  zox_filterlist_foreach(core->filterlist, 1, try_to_read, &readable);
  EXPECT_TRUE(readable);
  zox_filterlist_foreach(core->filterlist, 0, try_to_read, &readable);
  EXPECT_FALSE(readable);
}

TEST_F(ZoxFilterlist, NoActiveFilterIsNull) {
  EXPECT_EQ(zox_filterlist_get_active_filter(core->filterlist), nullptr);
}

TEST_F(ZoxFilterlist, ActiveFilterComesWithAReference) {
  ZOXFilterObject *active = zox_filter_object_new();
  core->filterlist->activeFilter = active;
  const OwnedObject<ZOXFilterObject> got(zox_filterlist_get_active_filter(core->filterlist));
  EXPECT_EQ(got.get(), active);
  g_object_unref(std::exchange(core->filterlist, zox_filterlist_new()));
  EXPECT_EQ(zox_filter_object_get_filter_postid(got.get()), 0U);
}

TEST_F(ZoxFilterlist, DestroyDropsOneReference) {
  g_object_ref(core->filterlist);
  add_filter(0, "een");
  zox_filterlist_destroy(core->filterlist);
  EXPECT_EQ(names_of(core->filterlist), "een ");
}

TEST_F(ZoxFilterlist, RejectsOtherInstances) {
  const OwnedObject<GObject> other(G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr)));
  auto *wrong = reinterpret_cast<ZOXFilterlist *>(other.get());
  const test::LogCapture log;
  zox_filterlist_load(wrong);
  zox_filterlist_save(wrong);
  zox_filterlist_set_filters(wrong, nullptr);
  zox_filterlist_append_filter(wrong, filter_of(0).get());
  zox_filterlist_foreach(wrong, 1, append_name, nullptr);
  EXPECT_EQ(zox_filterlist_get_active_filter(wrong), nullptr);
  zox_filterlist_destroy(wrong);
  zox_filterlist_destroy(nullptr);
  EXPECT_EQ(log.criticals().size(), 8U);
}

TEST_F(ZoxFilterlist, SetReplacesAllByCopies) {
  add_filter(0, "weg");
  const OwnedFilter one = filter_of(1, "een");
  const OwnedFilter two = filter_of(2, "twee");
  GSList *filters = g_slist_append(g_slist_append(nullptr, one.get()), two.get());
  zox_filterlist_set_filters(core->filterlist, filters);
  g_slist_free(filters);
  EXPECT_EQ(names_of(core->filterlist), "een twee ");
  EXPECT_STREQ(one->name->str, "een");
  EXPECT_NE(core->filterlist->filters->data, one.get());
}

TEST_F(ZoxFilterlist, SetRebuildsTheCategoryTreeAndSaves) {
  const OwnedFilter one = filter_of(1, "een");
  GSList *filters = g_slist_append(nullptr, one.get());
  zox_filterlist_set_filters(core->filterlist, filters);
  g_slist_free(filters);
  EXPECT_EQ(g_slist_length(core->categories), 5U);
  EXPECT_NE(test::read_file(cache_file("velkor.filters")).find("<![CDATA[een]]>"),
            std::string::npos);
}

TEST_F(ZoxFilterlist, SetTakesFiltersOfTheListItself) {
  add_filter(0, "een");
  add_filter(0, "twee");
  GSList *filters = g_slist_append(nullptr, core->filterlist->filters->next->data);
  zox_filterlist_set_filters(core->filterlist, filters);
  g_slist_free(filters);
  EXPECT_EQ(names_of(core->filterlist), "twee ");
}

TEST_F(ZoxFilterlist, SetToNothingLeavesMainCategoriesAndAnEmptyRoot) {
  keep({0, 1, 2});
  zox_filterlist_set_filters(core->filterlist, nullptr);
  EXPECT_EQ(core->filterlist->filters, nullptr);
  EXPECT_EQ(g_slist_length(core->categories), 4U);
  EXPECT_EQ(test::read_file(cache_file("velkor.filters")), "<?xml version=\"1.0\"?>\n<Filters/>\n");
}

TEST_F(ZoxFilterlist, ThreadsMayReadAndChangeItAtOnce) {
  constexpr int rounds = 100;
  const OwnedFilter one = filter_of(1, "een");
  const auto append = [&] {
    for (int round = 0; round < rounds; ++round)
      zox_filterlist_append_filter(core->filterlist, one.get());
  };
  const auto walk = [] {
    for (int round = 0; round < rounds; ++round) {
      const std::string names = names_of(core->filterlist);
      EXPECT_EQ(names.size() % std::string("een ").size(), 0U);
    }
  };
  std::thread first(append);
  std::thread second(append);
  std::thread reader(walk);
  walk();
  first.join();
  second.join();
  reader.join();
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 2U * rounds);
}

using ZoxFilterlistDeathTest = ZoxFilterlist;

TEST_F(ZoxFilterlistDeathTest, SaveTakesNoNullFilter) {
  core->filterlist->filters = g_slist_prepend(nullptr, nullptr);
  EXPECT_DEATH(zox_filterlist_save(core->filterlist),
               "zox_filterlist_save: assertion failed: \\(filter\\)");
  g_slist_free(std::exchange(core->filterlist->filters, nullptr));
}

}  // namespace
}  // namespace velkor
