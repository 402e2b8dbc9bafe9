/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_CORE_CACHE_PATH_H
#define VELKOR_CORE_CACHE_PATH_H

#include <string>

#include <velkor/zox_file.h>

#include "support/owned.h"

namespace velkor {

/** The path of a file in the cache directory. */
inline std::string cache_path(const char *name, bool compressed) noexcept {
  const OwnedText path(zox_file_parse_cache_filename(name, compressed ? 1 : 0));
  return path.get();
}

}  // namespace velkor

#endif
