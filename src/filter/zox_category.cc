/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The category tree: its entries, those that a posting belongs to, and their counters. */
#include <velkor/zox_category.h>

#include <array>
#include <atomic>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_filterlist.h>

#include "core/core_lock.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"

namespace velkor {
namespace {

/** The main categories by number. */
constexpr std::array main_names{"Beeld", "Geluid", "Spelletjes", "Applicaties"};

void free_category(ZoxCategory *category) noexcept {
  replace_string(category->name, nullptr);
  if (category->filter != nullptr)
    zox_filter_free_filter(category->filter);
  g_free(category);
}

using Tree = ListBuilder<ZoxCategory, free_category>;

ZoxCategory *new_category(GString *name, gint32 id, gint32 isMain, ZoxFilter *filter) noexcept {
  ZoxCategory *category = g_new0(ZoxCategory, 1);
  category->name = name;
  category->id = id;
  category->isMain = isMain;
  category->filter = filter;
  return category;
}

ZoxCategory *new_main_category(gint32 id, const char *name) noexcept {
  ZoxFilter *filter = zox_filter_new_filter();
  filter->cat = id;
  return new_category(g_string_new(name), id, 1, filter);
}

/** The place in the tree that the filters of one main category go to. */
struct Branch {
  Tree &tree;
  gint32 id;
};

gint append_filter(ZoxFilter *filter, gpointer userData) noexcept {
  const auto *branch = static_cast<const Branch *>(userData);
  if (filter->cat == branch->id) {
    GString *name = g_string_new(chars_or_null(filter->name));
    branch->tree.append(new_category(name, branch->id, 0, zox_filter_duplicate(filter)));
  }
  return 0;
}

/** How a filter's newsgroup condition is tested. */
constexpr guint32 against_own_list = 0;
constexpr guint32 against_id_set = 1;

void free_tree(GSList *categories) noexcept {
  for (ZoxCategory *category : Items<ZoxCategory>(categories)) {
    ZOX_ASSERT_IN(zox_categories_free, category, "category");
    ZOX_ASSERT_IN(zox_categories_free, category->name, "category->name");
    free_category(category);
  }
  g_slist_free(categories);
}

/** Puts `categories` in the place of the tree, which it returns: no reader meets half a tree. */
GSList *exchange_tree(GSList *categories) noexcept {
  const CoreWriter guard;
  return std::exchange(core->categories, categories);
}

bool accepts(const ZoxCategory &category, const ZoxEvent *event, guint32 groupMode) noexcept {
  return category.filter != nullptr && zox_filter_accepts(category.filter, event, groupMode);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_categories_init(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->filterlist);
  Tree tree;
  gint32 id = 0;
  for (const char *name : main_names) {
    Branch branch{tree, id};
    tree.append(new_main_category(id, name));
    zox_filterlist_foreach(core->filterlist, 1, append_filter, &branch);
    ++id;
  }
  free_tree(exchange_tree(tree.release()));
}

void zox_categories_free(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->categories);
  free_tree(exchange_tree(nullptr));
}

GSList *zox_categories_get(void) {
  ZOX_ASSERT(core);
  return core->categories;
}

ZoxCategory *zox_category_get_parent(gint32 id) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->categories);
  for (ZoxCategory *category : Items<ZoxCategory>(core->categories)) {
    ZOX_ASSERT(category);
    ZOX_ASSERT(category->name);
    if (category->id == id)
      return category;
  }
  return nullptr;
}

void zox_categories_reset_counters(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->categories);
  for (ZoxCategory *category : Items<ZoxCategory>(core->categories)) {
    ZOX_ASSERT(category);
    ZOX_ASSERT(category->name);
    std::atomic_ref(category->count).store(0, std::memory_order_relaxed);
  }
}

void zox_category_update(const ZoxEvent *event) {
  ZOX_ASSERT(core);
  const CoreReader guard;
  ZOX_ASSERT(core->categories);
  for (ZoxCategory *category : Items<ZoxCategory>(core->categories)) {
    ZOX_ASSERT(category);
    ZOX_ASSERT(category->name);
    // Fetches in the background count the postings that they find, several at once.
    if (accepts(*category, event, against_id_set))
      std::atomic_ref(category->count).fetch_add(1, std::memory_order_relaxed);
  }
}

GSList *zox_category_find(const ZoxEvent *event) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->categories);
  CellBuilder<ZoxCategory> found;
  for (ZoxCategory *category : Items<ZoxCategory>(core->categories)) {
    ZOX_ASSERT(category);
    ZOX_ASSERT(category->name);
    if (accepts(*category, event, against_own_list))
      found.append(category);
  }
  return found.release();
}

}  // extern "C"
