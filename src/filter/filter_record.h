/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The filter without conditions, and owners of one filter and of a list of them. */
#ifndef VELKOR_FILTER_FILTER_RECORD_H
#define VELKOR_FILTER_FILTER_RECORD_H

#include <memory>

#include <velkor/zox_filter.h>
#include <velkor/zox_filterlist.h>

#include "support/owned_records.h"
#include "support/slist.h"

namespace velkor {

inline ZoxFilter unset_filter() noexcept {
  ZoxFilter filter{};
  filter.cat = -1;
  filter.sCat = -1;
  return filter;
}

using FilterBuilder = ListBuilder<ZoxFilter, zox_filter_free_filter>;

inline void free_filters(GSList *filters) noexcept {
  for (ZoxFilter *filter : Items<ZoxFilter>(filters))
    zox_filter_free_filter(filter);
  g_slist_free(filters);
}

/** Appends the filters that a new user starts with. */
void append_default_filters(ZOXFilterlist *list) noexcept;

}  // namespace velkor

#endif
