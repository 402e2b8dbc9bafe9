/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_WATCHLIST_H
#define VELKOR_ZOX_WATCHLIST_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

GSList      *zox_watchlist_get(void);
gboolean     zox_watchlist_is_in_list(guint32 postId);
gint32       zox_watchlist_add(gint32 postId);
gint32       zox_watchlist_remove(gint32 postId);
void         zox_watchlist_clear(void);
ZoxString   *zox_watchlist_print(void);
ZoxErrorCode zox_watchlist_upload(char **serverText);
ZoxErrorCode zox_watchlist_download(char **serverText);
guint32      zox_watchlist_get_state(void);
void         zox_watchlist_set_state(guint32 state);

G_END_DECLS

#endif
