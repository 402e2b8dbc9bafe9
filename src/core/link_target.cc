/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/link_target.h"

#include <cerrno>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace velkor {
namespace {

namespace fs = std::filesystem;

constexpr int max_links = 40;  // the system's own limit; a longer chain fails when it is opened

/** Whether nobody but this user and root can have made what lies in the directory. */
bool is_trusted(const fs::path &directory) noexcept {
  struct stat status {};
  if (stat(directory.empty() ? "." : directory.c_str(), &status) != 0)
    return false;
  return (status.st_uid == geteuid() || status.st_uid == 0) &&
         (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

}  // namespace

LinkTarget follow_links(const std::string &path) noexcept {
  fs::path place = path;
  for (int links = 0; links < max_links; ++links) {
    std::error_code not_a_link;
    const fs::path next = fs::read_symlink(place, not_a_link);
    if (not_a_link)
      break;
    if (!is_trusted(place.parent_path()))
      return {place, ELOOP};
    place = place.parent_path() / next;
  }
  return {place};
}

}  // namespace velkor
