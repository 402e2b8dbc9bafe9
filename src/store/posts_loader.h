/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading the cache file of the postings section by section, on several threads. */
#ifndef VELKOR_STORE_POSTS_LOADER_H
#define VELKOR_STORE_POSTS_LOADER_H

#include <optional>
#include <string>
#include <vector>

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
 * Reads the file that is known already, and takes from `table` the postings of every section that
 * holds just what it holds in the file, instead of reading them. The table is given up.
 * @return nothing when a section cannot be read
 */
std::optional<std::vector<SectionContent>>
reread_sections(const PlacedReader &file, const KnownPosts &known, EventTable table) noexcept;

}  // namespace velkor

#endif
