/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/atomic_file.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <filesystem>

#include <fcntl.h>
#include <glib/gstdio.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/app_core.h"
#include "core/backup.h"
#include "core/file_outcome.h"
#include "core/link_target.h"

namespace velkor {
namespace {

constexpr mode_t owner_only = 0600;

/** Why an existing file may not be replaced, as an error number; 0 when it may. */
int obstacle(const std::string &path, const struct stat &status) noexcept {
  if (S_ISDIR(status.st_mode))
    return EISDIR;
  if (!S_ISREG(status.st_mode))
    return EINVAL;
  return access(path.c_str(), W_OK) == 0 ? 0 : errno;
}

/** The mode string of zlib, which also writes plain files. */
std::string stream_mode(AtomicFile::Form form, int level) noexcept {
  if (form == AtomicFile::Form::plain)
    return "wbT";
  return level == Z_DEFAULT_COMPRESSION ? "wb" : "wb" + std::to_string(level);
}

bool write_at_start(int descriptor, std::string_view bytes) noexcept {
  off_t place = 0;
  while (!bytes.empty()) {
    const ssize_t written = pwrite(descriptor, bytes.data(), bytes.size(), place);
    if (written < 0 && errno == EINTR)
      continue;
    if (written <= 0)
      return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
    place += written;
  }
  return true;
}

bool is_gone(const std::string &path) noexcept {
  return access(path.c_str(), F_OK) != 0 && errno == ENOENT;
}

/** Takes a lock that only a look at leftovers can hold, and that for a moment. */
void lock_against_removal(const Descriptor &file) noexcept {
  while (flock(file.get(), LOCK_EX) != 0 && errno == EINTR) {
  }
}

/** Makes the renaming itself durable; a file system that cannot do that is none the worse. */
void sync_directory_of(const std::string &path) noexcept {
  const auto directory = std::filesystem::path(path).parent_path();
  const Descriptor descriptor(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor)
    fsync(descriptor.get());
}

}  // namespace

AtomicFile::AtomicFile(const std::string &path, Form form, int level,
                       std::optional<mode_t> mode) noexcept
    : path_(path) {
  if (read_only()) {
    error_ = EROFS;
    return;
  }
  LinkTarget target = follow_links(path);
  target_ = std::move(target.path);
  error_ = target.error;
  if (ok())
    begin(form, level, mode);
}

AtomicFile::~AtomicFile() {
  if (!temporary_.empty())
    unlink(temporary_.c_str());
}

void AtomicFile::begin(Form form, int level, std::optional<mode_t> mode) noexcept {
  struct stat existing {};
  if (stat(target_.c_str(), &existing) == 0) {
    error_ = obstacle(target_, existing);
    mode = mode.value_or(existing.st_mode & 07777);
  } else if (errno != ENOENT) {
    error_ = errno;
  }
  if (ok())
    open(form, level, mode);
}

/**
 * The lock tells other processes that the file's writer is alive, see remove_leftovers(). One that
 * looks between the file's making and its locking removes it: then another one is made.
 */
void AtomicFile::make_temporary() noexcept {
  do {
    temporary_ = target_ + std::string(temporary_mark) + "XXXXXX";
    descriptor_ = Descriptor(g_mkstemp_full(temporary_.data(), O_WRONLY | O_CLOEXEC, owner_only));
    if (!descriptor_) {
      temporary_.clear();
      return;
    }
    lock_against_removal(descriptor_);
  } while (is_gone(temporary_));
}

void AtomicFile::open(Form form, int level, std::optional<mode_t> mode) noexcept {
  make_temporary();
  if (!note(static_cast<bool>(descriptor_)) ||
      !note(fchmod(descriptor_.get(), mode.value_or(owner_only)) == 0))
    return;
  // The stream closes its descriptor before the content is flushed to disk, hence a second one.
  Descriptor copy(fcntl(descriptor_.get(), F_DUPFD_CLOEXEC, 0));
  if (!note(static_cast<bool>(copy)))
    return;
  stream_.reset(gzdopen(copy.get(), stream_mode(form, level).c_str()));
  if (note(stream_ != nullptr))
    static_cast<void>(copy.release());
}

bool AtomicFile::note(bool done) noexcept {
  if (!done && error_ == 0)
    error_ = errno != 0 ? errno : EIO;
  return done;
}

bool AtomicFile::write(std::string_view bytes) noexcept {
  constexpr std::size_t max_length = INT_MAX;
  while (ok() && !bytes.empty()) {
    const auto length = static_cast<unsigned>(std::min(bytes.size(), max_length));
    static_cast<void>(note(gzwrite(stream_.get(), bytes.data(), length) > 0));
    bytes.remove_prefix(length);
  }
  return ok();
}

bool AtomicFile::flush() noexcept {
  return note(gzclose(stream_.release()) == Z_OK) &&
         note(write_at_start(descriptor_.get(), start_)) && note(fsync(descriptor_.get()) == 0);
}

bool AtomicFile::commit(const char *caller) noexcept {
  if (replace(caller))
    return true;
  set_file_outcome(read_only() ? refused_outcome(path_)
                               : failed_outcome(ZOX_FILE_NOT_WRITTEN, path_, error_));
  return false;
}

bool AtomicFile::replace(const char *caller) noexcept {
  if (!ok() || !flush() || !note(make_noted_backup(path_, target_, caller)) ||
      !note(rename(temporary_.c_str(), target_.c_str()) == 0))
    return false;
  temporary_.clear();
  identity_ = FileIdentity::of(descriptor_.get());
  sync_directory_of(target_);
  set_file_outcome({ZOX_FILE_FINE, 0, path_});
  return true;
}

void AtomicFile::fail(int error) noexcept {
  if (ok())
    error_ = error;
}

void AtomicFile::warn(const char *caller) const noexcept {
  if (!read_only())
    g_warning("%s(): cannot write %s: %s", caller, path_.c_str(), g_strerror(error_));
}

bool replace_content(AtomicFile &file, std::initializer_list<std::string_view> pieces,
                     const char *caller) noexcept {
  for (const std::string_view piece : pieces)
    file.write(piece);
  const bool done = file.commit(caller);
  if (!done)
    file.warn(caller);
  return done;
}

}  // namespace velkor
