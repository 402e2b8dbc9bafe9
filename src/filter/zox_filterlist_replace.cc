/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Replacing all filters, which the category tree follows. */
#include <velkor/zox_filterlist.h>

#include <utility>

#include <velkor/zox_category.h>

#include "filter/filter_record.h"
#include "support/object_type.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

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

void zox_filterlist_set_filters(ZOXFilterlist *list, GSList *filters) {
  g_return_if_fail(is_instance(list, zox_filterlist_get_type()));
  free_filters(exchange_filters(*list, copies_of(filters)));
  zox_categories_init();
  zox_filterlist_save(list);
}

}  // extern "C"
