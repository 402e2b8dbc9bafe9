/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The files of a cache directory: which exist, and whether each can be read. */
#ifndef VELKORCTL_CACHE_FILES_H
#define VELKORCTL_CACHE_FILES_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "support/cache_files.h"
#include "velkorctl/record.h"

namespace velkor::ctl {

using velkor::cache_files;
using velkor::CacheFile;

/** Those that exist in `directory`; throws a Failure when it is there but cannot be read. */
std::vector<CacheFile> present_files(const std::filesystem::path &directory);

/** As present_files(), but throws a Failure when there are none. */
std::vector<CacheFile> files_in(const std::filesystem::path &directory);

/** The files with their sizes as a list of objects, and its type. */
Value file_values(const std::filesystem::path &directory, const std::vector<CacheFile> &files);
Type files_type();

struct Inspection {
  /** Why the file cannot be used; empty when it is sound. */
  std::string problem{};
  /** The entries of the document, or the lines of the settings. */
  std::int64_t entries = 0;
  /** The name of the file that is read in place of this one; empty when this one is used. */
  std::string superseded_by{};
};

/**
 * Reads the whole file: the settings line by line, the documents as the library itself reads them.
 * There must be no core.
 */
Inspection inspect(const std::filesystem::path &directory, const CacheFile &file);

}  // namespace velkor::ctl

#endif
