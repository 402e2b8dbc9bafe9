/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_CONFIG_H
#define VELKOR_ZOX_CONFIG_H

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxConfig {
  guint32          firstTime;
  gint64           lastCheck;
  gint64           prevCheck;
  guint32          ledenCount;
  ZoxString       *usersOnline;
  ZoxString       *username;
  ZoxString       *password;
  ZoxString       *proxyHost;
  ZoxString       *proxyPort;
  ZoxString       *proxyUser;
  ZoxString       *proxyPassword;
  ZoxString       *htmlRenderer;
  GSList          *watchlist;              /* ZoxString * */
  GSList          *badword;                /* ZoxString * */
  gint32           updatenBijOpstarten;
  gint32           toonInfoBijEenZoekresultaat;
  gint32           startMaximized;
  gint32           toonStatusBijLaden;
  gint32           toonCategoriseerdeLijstBijKnopNieuw;
  gint32           trayIcon;
  gint32           toonGUIGroupFilter;
  gint32           recursiveUpdate;
  gint32           groupFilter;
  ZoxSplittedList *groupFilterList;
  gint32           verwijderPostsNaXDagen;
  gint32           gebruikFontFamily;
  gint32           geenTabbedBrowsing;
  GSList          *watcher;                /* ZoxString * */
  gint32           toonWatcherNotifications;
  gint32           openPostinfoOpAchtergrond;
  ZoxString       *ircNickname;
  ZoxString       *ircAltNickname;
  gint32           toonIRCClient;
  gint32           ratingScale;
  GSList          *statusFilter;           /* GINT_TO_POINTER */
} ZoxConfig;

void       zox_config_init(void);
void       zox_config_load(void);
void       zox_config_save(void);
void       zox_config_free(void);
ZoxConfig *zox_config_get(void);
void       zox_config_create_dummy(void);

G_END_DECLS

#endif
