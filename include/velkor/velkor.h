/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The whole C interface of libvelkor, the core of a desktop client for the ZOX service.
 *
 * What holds everywhere, unless a function's own comment says otherwise:
 *
 * **The core.** There is one core record, `core`, between zox_app_core_init() and
 * zox_app_core_cleanup(). A function that needs it aborts with the assertion "core" while there
 * is none.
 *
 * **Arguments.** No pointer may be null. An empty `GSList *` is null and allowed. Arguments stay
 * the caller's.
 *
 * **Results.** A returned `char *`, ZoxString, record or list belongs to the caller: texts go to
 * `g_free()`, growable texts to `g_string_free(text, TRUE)`, records to the free function of their
 * module. A returned `const char *` is constant and never freed. Everything is allocated with
 * GLib.
 *
 * **Messages.** A `char **` receives a message that the caller releases with `g_free()`; the place
 * may be null when the message is not wanted. "Set to null" means that an earlier content is
 * overwritten, not freed.
 *
 * **Assertions.** A programming error prints file, line, function and the failed expression and
 * aborts, in every build. "Asserts x" in a comment names such an expression; assertions on `core`
 * are not repeated.
 *
 * **Threads.** "Threads: any" functions may be called by every thread at the same time.
 * "Threads: any, own data" functions likewise, as long as no other thread uses the record or list
 * given. "Threads: one at a time, hand-over allowed" functions belong to one thread, usually the
 * one that runs the main loop; another thread may go on with them once it has been handed all of
 * them. The settings, categories, tags, newsgroups, watchlist, watchers and mail in `core` belong
 * to that thread as well. Functions for any thread may run while it changes them: what they read of
 * the settings, the watchlist, the categories and the newsgroup set is guarded.
 *
 * **Times** are counts of seconds since 1970-01-01 00:00 UTC as the server states them, except
 * where the local clock is named. Numbers in the server's documents are read as signed 32-bit
 * decimals and widened with their sign.
 *
 * **Files.** A file that the library writes is written beside its target, flushed to disk and
 * renamed over it: a reader finds the old content or the new, never half a file.
 */
#ifndef VELKOR_VELKOR_H
#define VELKOR_VELKOR_H

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_changes.h>
#include <velkor/zox_codes.h>
#include <velkor/zox_config.h>
#include <velkor/zox_dbus.h>
#include <velkor/zox_event.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_events_sort.h>
#include <velkor/zox_events_xml.h>
#include <velkor/zox_file.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_http_parameter.h>
#include <velkor/zox_keyring.h>
#include <velkor/zox_kudos.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_modje.h>
#include <velkor/zox_myzox.h>
#include <velkor/zox_post.h>
#include <velkor/zox_profile.h>
#include <velkor/zox_request.h>
#include <velkor/zox_settings.h>
#include <velkor/zox_signup.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>
#include <velkor/zox_types.h>
#include <velkor/zox_update_result.h>
#include <velkor/zox_watcher.h>
#include <velkor/zox_watchlist.h>
#include <velkor/zox_xml_parse.h>

#endif
