/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The entries of the category tree that a posting belongs to, and their counters. */
#include <velkor/zox_category.h>

#include <atomic>

#include <velkor/zox_app_core.h>
#include <velkor/zox_filter.h>

#include "support/assertion.h"
#include "support/slist.h"

namespace velkor {
namespace {

/** How a filter's newsgroup condition is tested. */
constexpr guint32 against_own_list = 0;
constexpr guint32 against_id_set = 1;

bool accepts(const ZoxCategory &category, const ZoxEvent *event, guint32 groupMode) noexcept {
  return category.filter != nullptr && zox_filter_accepts(category.filter, event, groupMode);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_categories_reset_counters(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->categories);
  for (ZoxCategory *category : Items<ZoxCategory>(core->categories)) {
    ZOX_ASSERT(category);
    ZOX_ASSERT(category->name);
    category->count = 0;
  }
}

void zox_category_update(const ZoxEvent *event) {
  ZOX_ASSERT(core);
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
