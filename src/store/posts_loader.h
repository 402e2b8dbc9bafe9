/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading the cache file of the postings section by section, on several threads. */
#ifndef VELKOR_STORE_POSTS_LOADER_H
#define VELKOR_STORE_POSTS_LOADER_H

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "store/event_order.h"
#include "store/event_table.h"
#include "store/known_posts.h"
#include "store/section_reader.h"

namespace velkor {

/** A file read by its sections, in their order. */
struct SectionedPosts {
  std::vector<SectionContent> contents;
  /** What is known of the file from now on; nothing when its order is not that of the ids. */
  std::optional<KnownPosts> known;
};

/**
 * Reads the whole file, which is the one at `path`.
 * @return nothing when the file has no valid table of sections or anything about it is wrong: it is
 *         then read in one go, which tells what
 */
std::optional<SectionedPosts> read_sections(const PlacedReader &file,
                                            const std::string &path) noexcept;

/**
 * Reads the file that is known already. The postings of a section that the entries, which are those
 * of a list, hold just as the file does are taken from them instead of being read: the object
 * itself where it could not be told from a new one, a copy without details otherwise.
 * @return nothing when a section cannot be read
 */
std::optional<std::vector<SectionContent>>
reread_sections(const PlacedReader &file, const KnownPosts &known,
                std::span<OrderedEntry> entries) noexcept;

}  // namespace velkor

#endif
