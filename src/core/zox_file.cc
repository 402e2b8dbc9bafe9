/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The three directories of the library and the names within them. */
#include <velkor/zox_file.h>

#include <cerrno>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/app_core.h"
#include "core/cache_directory.h"
#include "support/assertion.h"
#include "support/descriptor.h"
#include "support/owned.h"

namespace velkor {
namespace {

// Plain pointers, so that a worker thread still running at exit never meets a destroyed name.
char *lib_dir = nullptr;
char *data_dir = nullptr;
char *cache_dir = nullptr;

/** Guards the three against threads that look names up while one is set. */
std::mutex names_mutex;

/** Keeps `name` in `place`, releasing the earlier one. */
void keep_name(char *&place, OwnedText name) noexcept {
  const std::lock_guard lock(names_mutex);
  const OwnedText earlier(std::exchange(place, name.release()));
}

OwnedText default_cache_dir() noexcept {
  return OwnedText(g_strdup_printf("%s/.velkor", g_get_home_dir()));
}

using Result = DirectoryCheck::Result;

/** No permission at all: so a probe that a killed process left is told from a user's own file. */
constexpr mode_t probe_mode = 0;

bool is_probe(const char *path) noexcept {
  struct stat status {};
  return lstat(path, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
         status.st_size == 0 && (status.st_mode & 07777) == probe_mode;
}

/** Makes and removes the probe. A file of the user's own in its place is opened, nothing more. */
bool can_write(const char *probe) noexcept {
  constexpr int flags = O_WRONLY | O_NOFOLLOW | O_CLOEXEC;
  if (Descriptor(open(probe, flags | O_CREAT | O_EXCL, probe_mode)) ||
      (errno == EEXIST && is_probe(probe))) {
    unlink(probe);
    return true;
  }
  return errno == EEXIST && Descriptor(open(probe, flags | O_NONBLOCK));
}

/** Whether a file can be made in the cache directory; tried, since only that tells. */
DirectoryCheck try_to_write() noexcept {
  const OwnedText probe(g_strconcat(cache_dir, "/test.dat", nullptr));
  bool written = can_write(probe.get());
  // Another process has just removed the probe that stood in the way.
  for (int again = 0; !written && errno == ENOENT && again < 100; ++again)
    written = can_write(probe.get());
  return written ? DirectoryCheck{} : DirectoryCheck{Result::cannot_be_written, errno};
}

}  // namespace

void name_cache_directory(const char *name) noexcept {
  keep_name(cache_dir, name == nullptr ? default_cache_dir() : OwnedText(g_strdup(name)));
}

DirectoryCheck prepare_cache_directory() noexcept {
  struct stat status {};
  if (stat(cache_dir, &status) == 0)
    return S_ISDIR(status.st_mode) ? try_to_write() : DirectoryCheck{Result::not_a_directory};
  return mkdir(cache_dir, 0700) == 0 ? DirectoryCheck{}
                                     : DirectoryCheck{Result::cannot_be_made, errno};
}

DirectoryCheck look_at_cache_directory() noexcept {
  struct stat status {};
  if (stat(cache_dir, &status) != 0)
    return errno == ENOENT ? DirectoryCheck{} : DirectoryCheck{Result::cannot_be_read, errno};
  if (!S_ISDIR(status.st_mode))
    return {Result::not_a_directory};
  return access(cache_dir, R_OK | X_OK) == 0 ? DirectoryCheck{}
                                             : DirectoryCheck{Result::cannot_be_read, errno};
}

}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_file_set_lib_dir(const char *name) {
  keep_name(lib_dir, OwnedText(g_strdup(name == nullptr ? "/usr/lib64" : name)));
}

void zox_file_set_data_dir(const char *name) {
  keep_name(data_dir, OwnedText(g_strdup(name == nullptr ? "/usr/share/velkor" : name)));
}

void zox_file_set_cache_dir(const char *name) {
  name_cache_directory(name);
  if (zox_file_init_cache_dir() != 0)
    g_error("zox_file_set_cache_dir(): Aanmaken van %s is mislukt.", cache_dir);
}

void zox_file_free_lib_dir(void) {
  keep_name(lib_dir, nullptr);
}

void zox_file_free_data_dir(void) {
  keep_name(data_dir, nullptr);
}

void zox_file_free_cache_dir(void) {
  keep_name(cache_dir, nullptr);
}

gint32 zox_file_init_cache_dir(void) {
  ZOX_ASSERT(cache_dir);
  const DirectoryCheck check = read_only() ? look_at_cache_directory() : prepare_cache_directory();
  switch (check.result) {
  case Result::usable:
    break;
  case Result::cannot_be_made:
    g_warning("zox_file_init_cache_dir(): mkdir() mislukt: %s\n", g_strerror(check.error));
    return -2;
  case Result::not_a_directory:
    g_warning("zox_file_init_cache_dir(): map %s bestaat maar is geen directory\n", cache_dir);
    return -3;
  case Result::cannot_be_written:
    g_warning("zox_file_init_cache_dir(): de map %s heeft niet voldoende rechten om in te "
              "schrijven!\n",
              cache_dir);
    return -4;
  case Result::cannot_be_read:
    g_warning("zox_file_init_cache_dir(): de map %s kan niet worden gelezen: %s\n", cache_dir,
              g_strerror(check.error));
    return -5;
  }
  return 0;
}

char *zox_file_parse_lib_dir(const char *suffix) {
  const std::lock_guard lock(names_mutex);
  ZOX_ASSERT(lib_dir);
  return g_strconcat(lib_dir, suffix, nullptr);
}

char *zox_file_parse_data_dir(const char *suffix) {
  const std::lock_guard lock(names_mutex);
  ZOX_ASSERT(data_dir);
  return g_strconcat(data_dir, suffix, nullptr);
}

char *zox_file_parse_data_filename(const char *name) {
  const std::lock_guard lock(names_mutex);
  ZOX_ASSERT(data_dir);
  return name == nullptr ? g_strdup(data_dir) : g_strconcat(data_dir, "/", name, nullptr);
}

char *zox_file_parse_cache_filename(const char *name, gint32 compressed) {
  const std::lock_guard lock(names_mutex);
  ZOX_ASSERT(cache_dir);
  if (name == nullptr)
    return g_strdup(cache_dir);
  return g_strconcat(cache_dir, "/", name, compressed != 0 ? ".gz" : nullptr, nullptr);
}

}  // extern "C"
