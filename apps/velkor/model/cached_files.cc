/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/cached_files.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <system_error>

#include <sys/stat.h>

namespace velkor::app {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> names_in(const fs::path &directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error))
    names.push_back(entry->path().filename());
  std::ranges::sort(names, std::greater{});
  return names;
}

/** As the library names a file that it puts aside; behind that comes the time. */
bool is_kept(std::string_view name, const std::string &file) {
  return std::ranges::any_of(
      std::initializer_list<std::string_view>{".onleesbaar-", ".vorige-"},
      [&](std::string_view mark) { return name.starts_with(file + std::string(mark)); });
}

CachedFile file_of(const fs::path &directory, const std::string &name, CacheFile::Kind kind) {
  CachedFile file{.name = name, .kind = kind};
  struct stat facts {};
  if (stat((directory / name).c_str(), &facts) == 0) {
    file.size = facts.st_size;
    file.stamp = facts.st_mtime;
  }
  return file;
}

}  // namespace

std::vector<CachedFile> cached_files(const fs::path &directory, const FileProblems &problems) {
  const std::vector<std::string> names = names_in(directory);
  std::vector<CachedFile> files;
  for (const CacheFile &known : cache_files()) {
    if (std::ranges::find(names, known.name) != names.end()) {
      files.push_back(file_of(directory, known.name, known.kind));
      if (const auto problem = problems.find(known.name); problem != problems.end()) {
        files.back().state = CachedFile::State::damaged;
        files.back().problem = problem->second;
      }
    }
    for (const std::string &name : names)
      if (is_kept(name, known.name)) {
        files.push_back(file_of(directory, name, known.kind));
        files.back().state = CachedFile::State::kept;
      }
  }
  return files;
}

CacheCare care_for(const std::vector<CachedFile> &files) noexcept {
  CacheCare care = CacheCare::none;
  for (const CachedFile &file : files) {
    if (file.state == CachedFile::State::damaged && file.kind == CacheFile::Kind::postings)
      return CacheCare::fetch_spots;
    if (file.state == CachedFile::State::damaged)
      care = CacheCare::damaged;
    else if (file.state == CachedFile::State::kept && care == CacheCare::none)
      care = CacheCare::kept;
  }
  return care;
}

}  // namespace velkor::app
