/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Start-up, shut-down and the one record through which everything is reached.
 */
#ifndef VELKOR_ZOX_APP_CORE_H
#define VELKOR_ZOX_APP_CORE_H

#include <velkor/zox_config.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** Everything that the library keeps. It starts zero-filled and owns what its fields point to. */
typedef struct _ZoxAppCore {
  ZoxConfig *config;          /**< the settings */
  ZOXFilterlist *filterlist;  /**< the user's filters */
  ZOXEventlist *eventlist;    /**< all known postings */
  guint32 watchlistUnchanged; /**< set to 0 when a posting on the watchlist is replaced; setting
                                   it to 1 is the front end's business */
  guint32 watcherNoHits;      /**< set to 0 when a merged posting matches a watcher; setting it to
                                   1 is the front end's business */
  GSList *groups;             /**< of ZoxGroup, the newsgroups; null while unknown */
  GSList *categories;         /**< of ZoxCategory */
  GSList *mail;               /**< of ZoxBericht, oldest first */
  GSList *tags;               /**< of ZoxTag */
} ZoxAppCore;

/**
 * The core record; null before zox_app_core_init() or zox_app_core_open() and after
 * zox_app_core_cleanup() or zox_app_core_close().
 */
extern ZoxAppCore *core;

/**
 * Starts the library: GLib's threads and types, the D-Bus service, the directories, the settings,
 * filters, categories, tags, newsgroups, mail and the cached postings. Missing or unreadable files
 * are no failure; the defaults stand in and the default filters and an empty mail file are written.
 * Temporary files that killed processes left in the cache are removed. Permissions that others have
 * on the library's files and on a cache directory that holds nothing else, or is called ".velkor",
 * are taken from them with a warning. When another instance owns the D-Bus service, that one is
 * asked to come to the front and this process prints "Velkor is reeds actief\n" and exits with
 * status 1. Asserts "core == NULL". Threads: the main thread, before any other function.
 * @param dataDir       data directory of the front end; null for "/usr/share/velkor"
 * @param cacheDir      directory of all files written; null for ".velkor" in the home directory.
 *                      An unusable one ends the process, see zox_file_set_cache_dir()
 * @param libDir        directory of the authentication plug-in; null for "/usr/lib64"
 * @param dbusArgument  text kept on the D-Bus object for the front end; may be null
 * @param isGui         number kept on the D-Bus object, see velkor_dbus_is_gui()
 * @param dbusError     receives a message when the bus cannot be used; may be null; otherwise
 *                      untouched
 * @param dbusOk        receives 1 when this process now owns the service, else 0; may be null
 * @return 1
 */
gint32 zox_app_core_init(const char *dataDir, const char *cacheDir, const char *libDir,
                         const char *dbusArgument, gint32 isGui, char **dbusError, gint32 *dbusOk);

/**
 * Stops the D-Bus service, saves the settings, releases all but the library directory's name and
 * the mail, and sets `core` to null; does nothing without a core. Requests of zox_request.h, and
 * what was started by zox_eventinfo_fetch_async() and zox_events_forum_fetch_async(), are ended
 * first, within about a second: their callbacks still come, those of the latter with the result of
 * a failed request. Nothing else may be running on another thread. Threads: one at a time,
 * hand-over allowed.
 */
void zox_app_core_cleanup(void);

/** How zox_app_core_open() starts; a zero-filled record loads nothing into a core that may write.
 */
typedef struct _ZoxCoreOptions {
  const char *dataDir;      /**< data directory of the front end; null for "/usr/share/velkor" */
  const char *cacheDir;     /**< cache directory; null for ".velkor" in the home directory */
  const char *libDir;       /**< directory of the authentication plug-in; null for "/usr/lib64" */
  guint32 parts;            /**< what to load and start, a sum of ZoxCorePart */
  gint32 readOnly;          /**< non-zero: the library changes no file, see zox_app_core_open() */
  const char *dbusArgument; /**< with ZOX_CORE_BUS: text kept for the front end; may be null */
  gint32 isGui;             /**< with ZOX_CORE_BUS: answered by velkor_dbus_is_gui() */
} ZoxCoreOptions;

/**
 * Addition to the interface: starts the library as zox_app_core_init() does, but only the parts
 * asked for, without ending the process, and for reading only if wanted. The parts are loaded in
 * the order of ZoxCorePart, after the D-Bus service; the categories are made in any case, of the
 * filters that there are. Files that are missing or unreadable are no failure, except settings that
 * are there: defaults must not take their place. Settings that are missing are not warned about.
 * After success, zox_file_last_error() is about the file read last: that of the postings, else of
 * the mail, and so on.
 *
 * A core for reading only changes nothing in the cache, however the process ends: no directory is
 * made, no file written, renamed or deleted, and no permission changed. A missing directory is an
 * empty one. Default filters stay in memory. A plain file beside a compressed one is read in its
 * place and stays. Functions that save fail without a warning, with their usual result and
 * ZOX_FILE_READ_ONLY in zox_file_last_error(). Downloads into temporary files are not affected.
 *
 * Asserts "core == NULL" and "options". Threads: the main thread, before any other function.
 * @param options  directories, parts and mode; the texts are copied
 * @param message  receives a new text: why it failed; after success, why the bus cannot be used,
 *                 or null; may be null
 * @return ZOX_CORE_OPENED; any other result leaves no core, no directory name and no service behind
 */
ZoxCoreResult zox_app_core_open(const ZoxCoreOptions *options, char **message);

/**
 * Addition to the interface: loads parts that zox_app_core_open() left out, so that a start splits
 * in two: a short step on the main thread (`zox_app_core_open()` with ZOX_CORE_BUS,
 * ZOX_CORE_SETTINGS, ZOX_CORE_FILTERS, ZOX_CORE_TABLES and ZOX_CORE_MAIL: the bus and small files),
 * and the postings, which may be many, on another thread while a window shows itself already. The
 * outcome of the file read last is in zox_file_last_error() of the calling thread.
 * Threads: one at a time, hand-over allowed; with ZOX_CORE_POSTINGS alone any, while the filters
 * and categories stay as they are; the event list may be read meanwhile and shows all postings at
 * once at the end. zox_request_load() does this.
 * @param parts  ZOX_CORE_FILTERS, ZOX_CORE_TABLES, ZOX_CORE_MAIL and ZOX_CORE_POSTINGS, added up;
 *               other parts are ignored
 */
void zox_app_core_load(guint32 parts);

/**
 * Addition to the interface: stops the D-Bus service, releases everything, mail and library
 * directory included, and sets `core` to null; does nothing without a core. Nothing is saved.
 * What runs in the background ends as by zox_app_core_cleanup(). Threads: one at a time, hand-over
 * allowed.
 */
void zox_app_core_close(void);

/**
 * Asserts "core->config". Threads: one at a time, hand-over allowed.
 * @return `core->config->firstTime`: 1 until a file with user name and password was loaded
 */
guint32 zox_app_core_is_first_time(void);

/**
 * Threads: any.
 * @return `core->filterlist` with a new reference, which the caller drops with `g_object_unref()`
 */
ZOXFilterlist *zox_filterlist_get(void);

/**
 * Threads: any.
 * @return `core->eventlist` with a new reference, which the caller drops with `g_object_unref()`
 */
ZOXEventlist *zox_eventlist_get(void);

/**
 * The Dutch sentence for a result. Does not need the core. Threads: any.
 * @param code        a result code
 * @param serverText  the server's notice, used by code 29 only; else it may be null
 * @return a new text; "Onbekende errcode!\n" for a code without a sentence
 */
char *zox_error_msg(ZoxErrorCode code, const char *serverText);

/**
 * Addition to the interface: chooses what a server's reply or a file may cost. By default a record
 * that lacks a text it must have is taken for a programming error and aborts. In tolerant mode that
 * one record is passed over with a warning and reading goes on: a posting whose "Groups" or "Tags"
 * has no text, a message without "From", "Subject" or "Body", an overview entry whose "Edit" has no
 * text, a profile with an empty text element. Does not need the core. Threads: any, before
 * reading starts.
 * @param tolerant  non-zero to switch the tolerant mode on, 0 to switch it off (the default)
 */
void zox_set_tolerant(gint32 tolerant);

G_END_DECLS

#endif
