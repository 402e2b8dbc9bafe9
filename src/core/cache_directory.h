/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Naming the cache directory and finding out whether it can be used. */
#ifndef VELKOR_CORE_CACHE_DIRECTORY_H
#define VELKOR_CORE_CACHE_DIRECTORY_H

namespace velkor {

/** Sets the name as zox_file_set_cache_dir() does, without looking at the directory. */
void name_cache_directory(const char *name) noexcept;

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
