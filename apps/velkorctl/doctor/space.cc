/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Free space: a file is replaced by a whole new one, so that both need room. */
#include <cstdint>
#include <system_error>

#include "velkorctl/doctor/examination.h"
#include "velkorctl/progress.h"

namespace velkor::ctl::doctor {
namespace {

namespace fs = std::filesystem;

/** What an update needs beside the size of the postings. */
constexpr std::uintmax_t reserve = 16'000'000;

std::uintmax_t size_of(const fs::path &path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  return error ? 0 : size;
}

/** The room that is left where the path is or would be; the highest number when that is not known.
 */
std::uintmax_t room_at(fs::path path) {
  std::error_code error;
  while (!fs::exists(path, error) && path.has_relative_path())
    path = path.parent_path();
  const fs::space_info space = fs::space(path, error);
  return error ? UINTMAX_MAX : space.available;
}

Finding check(const fs::path &path, std::uintmax_t needed) {
  const std::uintmax_t room = room_at(path);
  if (room == UINTMAX_MAX)
    return {"space", "the room left in " + path.string() + " is not known"};
  std::string what = show_bytes(static_cast<std::int64_t>(room)) + " are free in " + path.string();
  if (room >= needed)
    return {"space", what};
  return {"space", what + ", and an update needs " + show_bytes(static_cast<std::int64_t>(needed)),
          "make room, or choose another place"};
}

}  // namespace

Findings check_space(const fs::path &directory) {
  std::error_code error;
  const fs::path temporary = fs::temp_directory_path(error);
  Findings findings{check(directory, 2 * size_of(directory / "velkor.posts.gz") + reserve)};
  if (!error)
    findings.push_back(check(temporary, reserve));
  return findings;
}

}  // namespace velkor::ctl::doctor
