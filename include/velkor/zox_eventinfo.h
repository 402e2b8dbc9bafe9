/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENTINFO_H
#define VELKOR_ZOX_EVENTINFO_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef gint (*ZoxEventinfoCallback)(ZoxErrorCode result, gint32 postId, char *message,
                                     gpointer userData);

ZoxEvent    *zox_eventinfo_findpost(gint32 postId);
ZoxErrorCode zox_eventinfo_fetch(gint32 postId, char **message);
void         zox_eventinfo_fetch_async(gint32 postId, ZoxEventinfoCallback callback,
                                       gpointer userData);
ZoxEvent    *zox_eventinfo_parse_findpost(const ZoxString *buffer);
ZoxEvent    *zox_eventinfo_parse(const ZoxString *text);

G_END_DECLS

#endif
