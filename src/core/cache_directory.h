/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The cache directory: its name, the paths in it, and whether it can be used. */
#ifndef VELKOR_CORE_CACHE_DIRECTORY_H
#define VELKOR_CORE_CACHE_DIRECTORY_H

#include <string>

#include <velkor/zox_file.h>

#include "support/owned.h"

namespace velkor {

/** Sets the name as zox_file_set_cache_dir() does, without looking at the directory. */
void name_cache_directory(const char *name) noexcept;

/** The path of a file in the cache directory. */
inline std::string cache_path(const char *name, bool compressed) noexcept {
  const OwnedText path(zox_file_parse_cache_filename(name, compressed ? 1 : 0));
  return path.get();
}

struct DirectoryCheck {
  enum class Result { usable, cannot_be_made, not_a_directory, cannot_be_read, cannot_be_written };

  Result result = Result::usable;
  int error = 0;  // the system's reason; 0 when it is usable or no directory
};

/** Makes the directory, or tries whether files can be made in it. */
DirectoryCheck prepare_cache_directory() noexcept;

/** Whether the directory can be read. One that is missing can: it holds nothing. */
DirectoryCheck look_at_cache_directory() noexcept;

}  // namespace velkor

#endif
