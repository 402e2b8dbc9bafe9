/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Cache files in sections, made and taken apart by the tests. */
#ifndef VELKOR_TESTS_UNIT_STORE_SECTIONED_FILE_H
#define VELKOR_TESTS_UNIT_STORE_SECTIONED_FILE_H

#include <string>
#include <vector>

#include "store/posts_layout.h"

namespace velkor::test {

/** A section as a test wants it. */
struct SectionText {
  std::string text;
  /** Of its postings; `no_digest` for none. */
  std::uint64_t digest = 0;
  /** zlib's level; the library itself writes at level 9. */
  int level = 9;
};

/** The bytes of a file with these sections. */
std::string sectioned_file(const std::vector<SectionText> &sections, std::uint64_t seed = 1);

/** The table of such a file. */
PostsLayout layout_of(const std::string &bytes);

/** Where a section begins in the file. */
std::size_t offset_of(const PostsLayout &layout, std::size_t section);

}  // namespace velkor::test

#endif
