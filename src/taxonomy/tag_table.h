/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The fixed tag vocabulary as a table: the groups of each main category and their names. */
#ifndef VELKOR_TAXONOMY_TAG_TABLE_H
#define VELKOR_TAXONOMY_TAG_TABLE_H

#include <span>

#include <glib.h>

namespace velkor {

/** One tag group: the code of its n-th tag is the letter followed by n. */
struct TagGroup {
  guint32 category;
  char letter;
  const char *name;
  std::span<const char *const> tags;
};

/** The groups in vocabulary order: by category, then by letter. */
std::span<const TagGroup> tag_groups() noexcept;

}  // namespace velkor

#endif
