/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_watchlist.h>

#include <atomic>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_string.h>

#include "core/core_lock.h"
#include "filter/watched_ids.h"
#include "filter/watchlist_entries.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/text_writer.h"

namespace velkor {

void WatchedIds::read() noexcept {
  ids_.reset(g_hash_table_new(g_direct_hash, nullptr));
  const CoreReader guard;
  for (const ZoxString *watchlist : Items<ZoxString>(zox_watchlist_get())) {
    if (watchlist == nullptr) {
      cut_short_ = true;
      return;
    }
    g_hash_table_add(ids_.get(), GINT_TO_POINTER(leading_integer(watchlist->str)));
  }
}

bool WatchedIds::contains(gint32 postId) noexcept {
  if (lookups_ < lookups_without_set) {
    ++lookups_;
    return zox_watchlist_is_in_list(static_cast<guint32>(postId)) != FALSE;
  }
  if (!ids_)
    read();
  if (g_hash_table_contains(ids_.get(), GINT_TO_POINTER(postId)) != FALSE)
    return true;
  ZOX_ASSERT_IN(zox_watchlist_is_in_list, !cut_short_, "watchlist");
  return false;
}

bool WatchedIds::add(gint32 postId) noexcept {
  if (contains(postId))
    return false;
  if (!ids_)
    read();
  g_hash_table_add(ids_.get(), GINT_TO_POINTER(postId));
  return true;
}

void append_watched(GSList *entries) noexcept {
  const CoreWriter guard;
  core->config->watchlist = g_slist_concat(core->config->watchlist, entries);
}

void note_watched_change() noexcept {
  std::atomic_ref(core->watchlistUnchanged).store(0);
}

namespace {

bool take_off(gint32 postId) noexcept {
  const CoreWriter guard;
  GSList *&entries = core->config->watchlist;
  for (GSList *cell = entries; cell != nullptr; cell = cell->next) {
    auto *watchlist = static_cast<ZoxString *>(cell->data);
    ZOX_ASSERT_IN(zox_watchlist_remove, watchlist, "watchlist");
    if (leading_integer(watchlist->str) != postId)
      continue;
    free_string(watchlist);
    entries = g_slist_delete_link(entries, cell);
    return true;
  }
  return false;
}

void take_all_off() noexcept {
  const CoreWriter guard;
  for (ZoxString *watchlist : Items<ZoxString>(core->config->watchlist)) {
    ZOX_ASSERT_IN(zox_watchlist_clear, watchlist, "watchlist");
    g_string_free(watchlist, TRUE);
  }
  g_slist_free(std::exchange(core->config->watchlist, nullptr));
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

GSList *zox_watchlist_get(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  return core->config->watchlist;
}

gboolean zox_watchlist_is_in_list(guint32 postId) {
  ZOX_ASSERT(core);
  const CoreReader guard;
  ZOX_ASSERT(core->config);
  for (const ZoxString *watchlist : Items<ZoxString>(core->config->watchlist)) {
    ZOX_ASSERT(watchlist);
    if (leading_integer(watchlist->str) == static_cast<gint32>(postId))
      return TRUE;
  }
  return FALSE;
}

gint32 zox_watchlist_add(gint32 postId) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  if (postId < 1 || zox_watchlist_is_in_list(static_cast<guint32>(postId)) != FALSE)
    return 0;
  append_watched(g_slist_prepend(nullptr, zox_string_integer(postId)));
  zox_config_save();
  return 1;
}

gint32 zox_watchlist_remove(gint32 postId) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  if (!take_off(postId))
    return 0;
  zox_config_save();
  return 1;
}

void zox_watchlist_clear(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  take_all_off();
  zox_config_save();
}

ZoxString *zox_watchlist_print(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  TextWriter text;
  LineWriter lines(text);
  for (const ZoxString *watchlist : Items<ZoxString>(core->config->watchlist)) {
    ZOX_ASSERT(watchlist);
    lines.number_line({"Watchlist", 1}, leading_integer(watchlist->str));
  }
  return text.release();
}

guint32 zox_watchlist_get_state(void) {
  ZOX_ASSERT(core);
  return std::atomic_ref(core->watchlistUnchanged).load();
}

void zox_watchlist_set_state(guint32 state) {
  ZOX_ASSERT(core);
  std::atomic_ref(core->watchlistUnchanged).store(state);
}

}  // extern "C"
