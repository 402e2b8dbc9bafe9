/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_WATCHER_H
#define VELKOR_ZOX_WATCHER_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef gint (*ZoxWatcherFunc)(ZoxEvent *event, const char *text, gpointer userData);

gboolean     zox_watcher_test_event(const ZoxEvent *event);
void         zox_watcher_foreach(const char *text, ZoxWatcherFunc func, gpointer userData);
guint32      zox_watcher_get_state(void);
void         zox_watcher_set_state(guint32 state);

G_END_DECLS

#endif
