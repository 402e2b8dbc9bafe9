/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_APP_CORE_H
#define VELKOR_ZOX_APP_CORE_H

#include <velkor/zox_config.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxAppCore {
  ZoxConfig     *config;
  ZOXFilterlist *filterlist;
  ZOXEventlist  *eventlist;
  guint32        watchlistUnchanged;
  guint32        watcherNoHits;
  GSList        *groups;                   /* ZoxGroup * */
  GSList        *categories;               /* ZoxCategory * */
  GSList        *mail;                     /* ZoxBericht * */
  GSList        *tags;                     /* ZoxTag * */
} ZoxAppCore;

extern ZoxAppCore *core;

gint32         zox_app_core_init(const char *dataDir, const char *cacheDir,
                                 const char *libDir, const char *dbusArgument,
                                 gint32 isGui, char **dbusError, gint32 *dbusOk);
void           zox_app_core_cleanup(void);
guint32        zox_app_core_is_first_time(void);
ZOXFilterlist *zox_filterlist_get(void);
ZOXEventlist  *zox_eventlist_get(void);
char          *zox_error_msg(ZoxErrorCode code, const char *serverText);

/* Addition to the interface. */
void zox_set_tolerant(gint32 tolerant);

G_END_DECLS

#endif
