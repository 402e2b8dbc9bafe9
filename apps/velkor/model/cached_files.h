/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The files of the cache directory as the user takes care of them. */
#ifndef VELKOR_APP_MODEL_CACHED_FILES_H
#define VELKOR_APP_MODEL_CACHED_FILES_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/cache_files.h"

namespace velkor::app {

struct CachedFile {
  enum class State {
    sound,
    damaged,  // it is read in vain
    kept,     // the library has put it aside, since it could not be read or an empty one came
  };

  std::string name{};
  CacheFile::Kind kind = CacheFile::Kind::settings;
  State state = State::sound;
  std::string problem{};  // of a damaged one, in words
  std::int64_t size = 0;
  std::int64_t stamp = 0;  // when it was written

  bool operator==(const CachedFile &) const = default;
};

/** Why files could not be read when they were last, by their names. */
using FileProblems = std::map<std::string, std::string>;

/** The files that are there, each followed by those of the name that were kept, the latest first.
 */
std::vector<CachedFile> cached_files(const std::filesystem::path &directory,
                                     const FileProblems &problems);

/** What to do about the files, the most urgent. */
enum class CacheCare {
  none,
  fetch_spots,  // the spots could not be read
  damaged,      // another file could not be read
  kept,         // a file was put aside
};
CacheCare care_for(const std::vector<CachedFile> &files) noexcept;

}  // namespace velkor::app

#endif
