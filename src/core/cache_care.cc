/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/cache_care.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <glib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/app_core.h"
#include "core/atomic_file.h"
#include "core/cache_directory.h"
#include "core/link_target.h"
#include "support/descriptor.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;

/** The files that the library keeps; two of them plain in the caches of earlier versions. */
constexpr std::array<const char *, 7> own_files{
    "velkor.conf", "velkor.filters", "velkor.groups",  "velkor.groups.gz",
    "velkor.mail", "velkor.posts",   "velkor.posts.gz"};

/** Whether the name is that of `file` or of something kept beside it, such as its backup. */
bool belongs_to(std::string_view name, std::string_view file) noexcept {
  return name == file ||
         (name.starts_with(file) && name.size() > file.size() && name[file.size()] == '.');
}

bool is_own(std::string_view name) noexcept {
  return std::ranges::any_of(own_files,
                             [name](std::string_view file) { return belongs_to(name, file); });
}

/** The file for which the temporary file of this name was made; empty when it is no such name. */
std::string_view target_of(std::string_view name) noexcept {
  constexpr std::size_t random_length = 6;
  const std::size_t mark = name.rfind(temporary_mark);
  if (mark == std::string_view::npos)
    return {};
  const std::string_view random = name.substr(mark + temporary_mark.size());
  const bool ours = random.size() == random_length &&
                    std::ranges::all_of(random, [](char sign) { return g_ascii_isalnum(sign); });
  return ours ? name.substr(0, mark) : std::string_view{};
}

/** The names in the directory, as far as it can be read. */
std::vector<std::string> names_in(const fs::path &directory) noexcept {
  std::vector<std::string> names;
  std::error_code error;
  fs::directory_iterator entry(directory, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error))
    names.push_back(entry->path().filename());
  return names;
}

/** What a descriptor refers to, if that is this user's own and of the given type. */
bool is_of_this_user(const Descriptor &file, mode_t type, struct stat &status) noexcept {
  return file && fstat(file.get(), &status) == 0 && (status.st_mode & S_IFMT) == type &&
         status.st_uid == geteuid();
}

/**
 * A writer holds a lock on its temporary file until that has its final name, and the system drops
 * the lock when the process dies, however that happens: a file that can be locked is dead, and that
 * of a living process never can be. An age would not tell them apart: a save may take minutes.
 */
void remove_if_dead(const fs::path &path) noexcept {
  const Descriptor file(open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (is_of_this_user(file, S_IFREG, status) && flock(file.get(), LOCK_EX | LOCK_NB) == 0)
    unlink(path.c_str());
}

/** The library's files by the directories to which their links lead. */
std::map<fs::path, std::vector<std::string>> files_by_directory() noexcept {
  std::map<fs::path, std::vector<std::string>> files;
  for (const char *file : own_files) {
    const LinkTarget target = follow_links(cache_path(file, false));
    const fs::path path(target.path);
    if (target.error == 0)
      files[path.parent_path()].push_back(path.filename());
  }
  return files;
}

constexpr mode_t others = S_IRWXG | S_IRWXO;

/** Whether others had any permission and have none now. */
bool narrow(const Descriptor &file, mode_t type) noexcept {
  struct stat status {};
  return is_of_this_user(file, type, status) && (status.st_mode & others) != 0 &&
         fchmod(file.get(), status.st_mode & 07777 & ~others) == 0;
}

bool narrow_file(const fs::path &path) noexcept {
  const LinkTarget target = follow_links(path);
  return target.error == 0 &&
         narrow(
             Descriptor(open(target.path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)),
             S_IFREG);
}

/**
 * Whether the directory is there for the library's files alone. The user may have named any as the
 * cache directory, even one on which the whole system depends.
 */
bool is_private(const fs::path &directory, const std::vector<std::string> &names) noexcept {
  const fs::path without_slash = (directory / "file").parent_path();
  return without_slash.filename() == ".velkor" ||
         std::ranges::all_of(names, [](const std::string &name) {
           return name.starts_with("velkor") || name.starts_with("before-restore-");
         });
}

/** One with the sticky bit is shared on purpose. */
bool narrow_directory(const fs::path &directory) noexcept {
  const Descriptor descriptor(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  struct stat status {};
  return is_of_this_user(descriptor, S_IFDIR, status) && (status.st_mode & S_ISVTX) == 0 &&
         narrow(descriptor, S_IFDIR);
}

}  // namespace

void remove_leftovers() noexcept {
  if (read_only())
    return;
  for (const auto &[directory, files] : files_by_directory()) {
    for (const std::string &name : names_in(directory)) {
      const std::string_view target = target_of(name);
      if (std::ranges::any_of(
              files, [target](const std::string &file) { return belongs_to(target, file); }))
        remove_if_dead(directory / name);
    }
  }
}

void narrow_permissions(const char *caller) noexcept {
  if (read_only())
    return;
  const fs::path directory = cache_path(nullptr, false);
  const std::vector<std::string> names = names_in(directory);
  std::string narrowed;
  const auto note = [&narrowed](const fs::path &path) {
    narrowed.append(narrowed.empty() ? "" : ", ").append(path);
  };
  if (is_private(directory, names) && narrow_directory(directory))
    note(directory);
  for (const std::string &name : names)
    if (is_own(name) && narrow_file(directory / name))
      note(directory / name);
  if (!narrowed.empty())
    g_warning("%s(): ook anderen dan de eigenaar hadden toegang tot %s; nu niet meer", caller,
              narrowed.c_str());
}

}  // namespace velkor
