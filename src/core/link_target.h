/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Following symbolic links before a file is written, as far as they can be trusted. */
#ifndef VELKOR_CORE_LINK_TARGET_H
#define VELKOR_CORE_LINK_TARGET_H

#include <string>

namespace velkor {

struct LinkTarget {
  std::string path;  // where the links lead to, even to a file that does not exist yet
  int error = 0;     // why they must not be followed, as an error number; else 0
};

/**
 * Follows the symbolic link `path`, and the one that it leads to, and so on. A link in a directory
 * where others may write could be theirs and lead to any file of this user: it is refused with
 * ELOOP, as O_NOFOLLOW refuses it.
 */
LinkTarget follow_links(const std::string &path) noexcept;

}  // namespace velkor

#endif
