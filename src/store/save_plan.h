/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Which sections of the cache file a save keeps as they are, and how it divides the rest. */
#ifndef VELKOR_STORE_SAVE_PLAN_H
#define VELKOR_STORE_SAVE_PLAN_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <velkor/zox_eventlist.h>

#include "store/event_order.h"
#include "store/known_posts.h"

namespace velkor {

/** The entries of a list at one moment, by rising id; they are held while this lives. */
class ListSnapshot {
public:
  explicit ListSnapshot(ZOXEventlist *list) noexcept;
  ~ListSnapshot();
  ListSnapshot(const ListSnapshot &) = delete;
  ListSnapshot &operator=(const ListSnapshot &) = delete;

  /** Whether the list had a table at all. */
  [[nodiscard]] bool has_table() const noexcept { return has_table_; }
  [[nodiscard]] std::span<OrderedEntry> entries() noexcept { return entries_; }

private:
  void take(ZOXEventlist *list) noexcept;

  bool has_table_ = false;
  std::vector<OrderedEntry> entries_;
};

/** Some entries that make up a section of the file. */
struct SavePiece {
  std::span<OrderedEntry> entries;
  std::uint64_t size = 0;               // of its text; an estimate for a new section
  const KnownSection *known = nullptr;  // the section to keep; null for a new one
};

/**
 * Divides the entries into sections, in their order.
 * @param known  the file whose sections may be kept; null for none
 * @param now    postings deleted long before this time are not saved and count for nothing
 */
std::vector<SavePiece> plan_save(std::span<OrderedEntry> entries, const KnownPosts *known,
                                 gint64 now) noexcept;

}  // namespace velkor

#endif
