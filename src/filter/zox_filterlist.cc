/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filterlist.h>

#include <utility>

#include <velkor/zox_category.h>

#include "filter/filter_record.h"
#include "support/assertion.h"
#include "support/object_type.h"
#include "support/rw_lock.h"
#include "support/slist.h"

namespace velkor {
namespace {

void init(ZOXFilterlist &list) noexcept {
  rw_lock_init(list.lock);
  list.filters = nullptr;
  list.activeFilter = nullptr;
}

void finalize(ZOXFilterlist &list) noexcept {
  {
    const WriteLock lock(list.lock);
    free_filters(std::exchange(list.filters, nullptr));
    g_clear_object(&list.activeFilter);
  }
  rw_lock_free(list.lock);
}

bool is_filterlist(ZOXFilterlist *list) noexcept {
  return is_instance(list, zox_filterlist_get_type());
}

void call_for_each(GSList *filters, ZoxFilterlistFunc func, gpointer userData) {
  for (ZoxFilter *filter : Items<ZoxFilter>(filters))
    func(filter, userData);
}

GSList *copies_of(const GSList *filters) noexcept {
  FilterBuilder copies;
  for (const ZoxFilter *filter : Items<ZoxFilter>(filters))
    copies.append(zox_filter_duplicate(filter));
  return copies.release();
}

/** Puts `filters` in the place of the filters held, which it returns. */
GSList *exchange_filters(ZOXFilterlist &list, GSList *filters) noexcept {
  const WriteLock lock(list.lock);
  return std::exchange(list.filters, filters);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

GType zox_filterlist_get_type(void) {
  static const GType type = register_object_type<ZOXFilterlist, init, finalize>("ZOXFilterlist");
  return type;
}

ZOXFilterlist *zox_filterlist_new(void) {
  return static_cast<ZOXFilterlist *>(g_object_new(zox_filterlist_get_type(), nullptr));
}

void zox_filterlist_destroy(ZOXFilterlist *list) {
  g_return_if_fail(is_filterlist(list));
  unref_object(list);
}

void zox_filterlist_set_filters(ZOXFilterlist *list, GSList *filters) {
  g_return_if_fail(is_filterlist(list));
  free_filters(exchange_filters(*list, copies_of(filters)));
  zox_categories_init();  // the category tree follows the filters
  zox_filterlist_save(list);
}

void zox_filterlist_append_filter(ZOXFilterlist *list, const ZoxFilter *filter) {
  g_return_if_fail(is_filterlist(list));
  OwnedFilter copy(zox_filter_duplicate(filter));
  const WriteLock lock(list->lock);
  list->filters = g_slist_append(list->filters, copy.release());
}

void zox_filterlist_foreach(ZOXFilterlist *list, gint32 readOnly, ZoxFilterlistFunc func,
                            gpointer userData) {
  g_return_if_fail(is_filterlist(list));
  ZOX_ASSERT(func);
  if (readOnly != 0) {
    const ReadLock lock(list->lock);
    call_for_each(list->filters, func, userData);
  } else {
    const WriteLock lock(list->lock);
    call_for_each(list->filters, func, userData);
  }
}

ZOXFilterObject *zox_filterlist_get_active_filter(ZOXFilterlist *list) {
  g_return_val_if_fail(is_filterlist(list), nullptr);
  const ReadLock lock(list->lock);
  return list->activeFilter == nullptr
             ? nullptr
             : static_cast<ZOXFilterObject *>(g_object_ref(list->activeFilter));
}

}  // extern "C"
