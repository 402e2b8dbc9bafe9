/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENTS_SORT_H
#define VELKOR_ZOX_EVENTS_SORT_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

ZoxString *zox_events_sort_filtered(ZoxTextFunc textFunc);
ZoxString *zox_events_sort_total(ZoxTextFunc textFunc);
ZoxString *zox_events_sort(gint32 filtered, ZoxTextFunc textFunc);
ZoxString *zox_events_sort_apply_filter(const ZoxFilter *filter);
ZoxString *zox_events_sort_print(const ZoxEvent *posting, gint32 indent, gint32 position,
                                 ZoxTextFunc textFunc);
ZoxString *zox_events_sort_parse_tags(const ZoxEvent *posting);

G_END_DECLS

#endif
