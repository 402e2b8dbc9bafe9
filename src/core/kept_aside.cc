/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/kept_aside.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <mutex>
#include <set>

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/cache_path.h"
#include "support/owned.h"

namespace velkor {
namespace {

/** The paths of the files that are to be kept. */
class Unreadable {
public:
  void add(const std::string &path) noexcept {
    const std::lock_guard lock(mutex_);
    paths_.insert(path);
  }
  bool remove(const std::string &path) noexcept {
    const std::lock_guard lock(mutex_);
    return paths_.erase(path) > 0;
  }

private:
  std::mutex mutex_;
  std::set<std::string> paths_;
};

Unreadable unreadable;

bool has_content(const std::string &path) noexcept {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
}

std::string local_stamp() noexcept {
  const std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>> now(g_date_time_new_now_local());
  const OwnedText stamp(g_date_time_format(now.get(), "%Y%m%d-%H%M%S"));
  return stamp.get();
}

/** A name beside `path` that no file has. */
std::string name_aside(const std::string &path) noexcept {
  const std::string first = path + ".onleesbaar-" + local_stamp();
  std::string name = first;
  for (int number = 2; access(name.c_str(), F_OK) == 0; ++number)
    name = first + "-" + std::to_string(number);
  return name;
}

/** Gives the file its second name, or where links are not to be had, that name alone. */
bool keep_as(const std::string &path, const std::string &name) noexcept {
  return link(path.c_str(), name.c_str()) == 0 || std::rename(path.c_str(), name.c_str()) == 0;
}

}  // namespace

void note_unreadable(const char *cache_name, bool compressed) noexcept {
  const std::string path = cache_path(cache_name, compressed);
  if (has_content(path))
    unreadable.add(path);
}

void note_readable(const char *cache_name, bool compressed) noexcept {
  unreadable.remove(cache_path(cache_name, compressed));
}

bool set_aside_if_unreadable(const std::string &path, const std::string &target) noexcept {
  if (!unreadable.remove(path) || !has_content(target))
    return true;
  const std::string name = name_aside(target);
  if (!keep_as(target, name)) {
    const int reason = errno;
    unreadable.add(path);
    errno = reason;
    return false;
  }
  g_warning("%s(): %s was onleesbaar en blijft bewaard als %s", __func__, path.c_str(),
            name.c_str());
  return true;
}

}  // namespace velkor
