/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The settings, kept in "velkor.conf" in the cache directory: one key=value line per field, the
 * key being the field's name. The file holds a password and is readable by its owner alone.
 * zox_settings.h describes each setting and has access by key.
 */
#ifndef VELKOR_ZOX_CONFIG_H
#define VELKOR_ZOX_CONFIG_H

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * The settings; one record, `core->config`, which owns its texts and lists. The value behind each
 * field is the one that it has before a file is read. The front end reads and changes the fields
 * directly, on the thread that owns the core and while no request runs on another; the functions of
 * zox_settings.h change them at any time. "front end" marks those that the library only keeps.
 */
typedef struct _ZoxConfig {
  guint32 firstTime;        /**< 1; 0 once a file with both user name and password was loaded */
  gint64 lastCheck;         /**< 0; server time of the last update. Saved as signed 32-bit */
  gint64 prevCheck;         /**< 0; server time of the update before; postings at or after it are
                                 new. Saved as signed 32-bit */
  guint32 ledenCount;       /**< 0; number of members, as the server states it */
  ZoxString *usersOnline;   /**< "Onbekend"; users online, as the server words it; may be null */
  ZoxString *username;      /**< null; the account */
  ZoxString *password;      /**< null; without one, requests go out without credentials */
  ZoxString *proxyHost;     /**< null; HTTP proxy, used only together with proxyPort */
  ZoxString *proxyPort;     /**< null; its port in decimal */
  ZoxString *proxyUser;     /**< null; used only together with proxyPassword */
  ZoxString *proxyPassword; /**< null */
  ZoxString *htmlRenderer;  /**< empty; front end: choice of renderer */
  GSList *watchlist;        /**< null; of ZoxString, post ids in decimal; see zox_watchlist.h */
  GSList *badword; /**< null; of ZoxString, none null; a posting whose title holds one of them,
                        regardless of case, is dropped when it is read */
  gint32 updatenBijOpstarten;                 /**< 1; front end: update at start */
  gint32 toonInfoBijEenZoekresultaat;         /**< 1; front end: details of a single hit */
  gint32 startMaximized;                      /**< 1; front end */
  gint32 toonStatusBijLaden;                  /**< 1; front end: progress while loading */
  gint32 toonCategoriseerdeLijstBijKnopNieuw; /**< 1; front end: list behind the button New */
  gint32 trayIcon;                            /**< 1; front end */
  gint32 toonGUIGroupFilter;                  /**< 0; front end: show the newsgroup filter */
  gint32 recursiveUpdate;           /**< 0; non-zero: an update asks on until nothing is new */
  gint32 groupFilter;               /**< 0; front end: newsgroup filter on or off */
  ZoxSplittedList *groupFilterList; /**< null; newsgroup ids in decimal; the copy of a filter with a
                                         newsgroup condition takes this list */
  gint32 verwijderPostsNaXDagen;   /**< 1; age at which postings go: 0 to 6 mean 7, 14, ... 49 days;
                                        any other value keeps all, with a warning */
  gint32 gebruikFontFamily;        /**< 1; front end */
  gint32 geenTabbedBrowsing;       /**< 0; front end */
  GSList *watcher;                 /**< null; of ZoxString, search texts; see zox_watcher.h */
  gint32 toonWatcherNotifications; /**< 1; front end */
  gint32 openPostinfoOpAchtergrond; /**< 1; front end: details open in the background */
  ZoxString *ircNickname;           /**< null; front end */
  ZoxString *ircAltNickname;        /**< empty; front end */
  gint32 toonIRCClient;             /**< 1; front end */
  gint32 ratingScale;               /**< 100; the rating that is shown as 100; not 0 */
  GSList *statusFilter; /**< null; front end: states to show, GINT_TO_POINTER in the cells */
} ZoxConfig;

/**
 * Makes the record with the values above and stores it in `core->config`, whose earlier content is
 * overwritten, not freed. Threads: one at a time, hand-over allowed.
 */
void zox_config_init(void);

/**
 * Replaces the record by what "velkor.conf" holds over the values above; pointers into the earlier
 * record become invalid. A file that cannot be opened leaves those values, with a warning; an
 * unknown key (a comment with "=" among them) is warned about and skipped. Threads: one at a time,
 * hand-over allowed.
 */
void zox_config_load(void);

/**
 * Writes the record to "velkor.conf", in a fixed order, without comments and with mode 0600. A
 * value never becomes a second line: a control character other than a tab ends it, and a text that
 * is longer than the 1023 bytes that are read of "key=value" is cut between characters. A number
 * that is too long, a newsgroup that no longer fits and an empty bad word are left out. A value
 * that is shortened or left out and a file that cannot be written are warned about. Asserts
 * "core->config". Threads: one at a time, hand-over allowed.
 */
void zox_config_save(void);

/**
 * Releases the record; `core->config` becomes null. Asserts "core->config". Threads: one at a
 * time, hand-over allowed.
 */
void zox_config_free(void);

/**
 * Threads: one at a time, hand-over allowed.
 * @return `core->config`, which stays the core's; null before it was made
 */
ZoxConfig *zox_config_get(void);

/**
 * Replaces "velkor.conf" by a starter file with placeholders for user name and password, for a new
 * user to fill in. Threads: one at a time, hand-over allowed.
 */
void zox_config_create_dummy(void);

G_END_DECLS

#endif
