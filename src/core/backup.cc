/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/backup.h"

#include <cerrno>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/cache_directory.h"
#include "support/immortal.h"
#include "support/owned.h"

namespace velkor {
namespace {

/** Why a backup is due: in its name and in the warning. */
struct Reason {
  std::string_view mark;
  const char *words;
};

constexpr Reason unreadable{"onleesbaar", "was onleesbaar"};
constexpr Reason emptied{"vorige", "wordt vervangen door een leeg bestand"};

/** The paths of the files of which a backup is due. */
class DueBackups {
public:
  void add(const std::string &path, const Reason &reason) noexcept {
    const std::lock_guard lock(mutex_);
    reasons_.emplace(path, reason);
  }
  std::optional<Reason> remove(const std::string &path) noexcept {
    const std::lock_guard lock(mutex_);
    const auto node = reasons_.extract(path);
    return node.empty() ? std::nullopt : std::optional(node.mapped());
  }

private:
  std::mutex mutex_;
  std::map<std::string, Reason> reasons_;
};

bool has_content(const std::string &path) noexcept {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
}

std::string local_stamp() noexcept {
  const std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>> now(g_date_time_new_now_local());
  const OwnedText stamp(g_date_time_format(now.get(), "%Y%m%d-%H%M%S"));
  return stamp.get();
}

/** Gives the file its second name, or where links are not to be had, that name alone. */
bool link_as(const std::string &path, const std::string &name) noexcept {
  return link(path.c_str(), name.c_str()) == 0 || std::rename(path.c_str(), name.c_str()) == 0;
}

void note(const char *cache_name, bool compressed, const Reason &reason) noexcept {
  const std::string path = cache_path(cache_name, compressed);
  if (has_content(path))
    immortal<DueBackups>().add(path, reason);
}

}  // namespace

void note_unreadable(const char *cache_name, bool compressed) noexcept {
  note(cache_name, compressed, unreadable);
}

void note_emptied(const char *cache_name, bool compressed) noexcept {
  note(cache_name, compressed, emptied);
}

void note_readable(const char *cache_name, bool compressed) noexcept {
  immortal<DueBackups>().remove(cache_path(cache_name, compressed));
}

std::string backup_name(const std::string &path, std::string_view mark) noexcept {
  const std::string first = path + "." + std::string(mark) + "-" + local_stamp();
  std::string name = first;
  for (int number = 2; access(name.c_str(), F_OK) == 0; ++number)
    name = first + "-" + std::to_string(number);
  return name;
}

bool make_noted_backup(const std::string &path, const std::string &target,
                       const char *caller) noexcept {
  const std::optional<Reason> reason = immortal<DueBackups>().remove(path);
  if (!reason || !has_content(target))
    return true;
  const std::string name = backup_name(target, reason->mark);
  if (!link_as(target, name)) {
    const int error = errno;
    immortal<DueBackups>().add(path, *reason);
    errno = error;
    return false;
  }
  g_warning("%s(): %s %s en blijft bewaard als %s", caller, path.c_str(), reason->words,
            name.c_str());
  return true;
}

}  // namespace velkor
