/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENTS_H
#define VELKOR_ZOX_EVENTS_H

#include <velkor/zox_eventlist.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef gint (*ZoxEventsProgress)(gint32 total, gint32 index);
typedef gint (*ZoxEventsDone)(gpointer userData);

ZoxErrorCode zox_events_fetch_get_available(GSList **dumpList, gint32 lastCheck,
                                            gint64 *newLastCheck, char **serverText);
ZoxErrorCode zox_events_fetch(ZoxEventsProgress progress,
                              ZoxEventlistProgress mergeProgress, ZoxEventsDone done,
                              char **serverText, gpointer userData);

G_END_DECLS

#endif
