/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The filters that a new user starts with. */
#ifndef VELKOR_FILTER_DEFAULT_FILTERS_H
#define VELKOR_FILTER_DEFAULT_FILTERS_H

#include <velkor/zox_filterlist.h>

namespace velkor {

void append_default_filters(ZOXFilterlist *list) noexcept;

}  // namespace velkor

#endif
