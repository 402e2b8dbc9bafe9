/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/writer_lock.h"

#include <array>
#include <cerrno>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "velkorctl/failure.h"
#include "velkorctl/messages.h"

namespace velkor::ctl {
namespace {

constexpr auto pause = std::chrono::milliseconds(100);

/**
 * The holder's number is written into the file. Were it a link, symbolic or not, it could be that
 * of another user who may write in the directory too, and lead to any file of this one.
 */
Descriptor open_lock_file(const std::filesystem::path &path) {
  constexpr int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  Descriptor file(open(path.c_str(), flags | O_CREAT | O_EXCL, 0600));
  if (!file && errno == EEXIST)
    file = Descriptor(open(path.c_str(), flags));
  if (!file)
    throw Failure(Exit::files, "cannot write " + path.string() + ": " + system_error(errno));
  struct stat status {};
  if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_nlink > 1)
    throw Failure(Exit::files, "cannot use " + path.string() + ": it is not a file of its own");
  return file;
}

/** The process that holds the lock, for a message; it wrote its number into the file. */
std::string holder(const Descriptor &file) {
  std::array<char, 16> digits{};
  const ssize_t count = pread(file.get(), digits.data(), digits.size(), 0);
  return count > 0
             ? " (process " + std::string(digits.data(), static_cast<std::size_t>(count)) + ")"
             : "";
}

void write_own_number(const Descriptor &file) noexcept {
  const std::string number = std::to_string(getpid());
  const bool written =
      ftruncate(file.get(), 0) == 0 && pwrite(file.get(), number.data(), number.size(), 0) >= 0;
  static_cast<void>(written);  // only a message needs it
}

bool try_lock(const Descriptor &file, const std::filesystem::path &path) {
  if (flock(file.get(), LOCK_EX | LOCK_NB) == 0)
    return true;
  if (errno != EWOULDBLOCK && errno != EINTR)
    throw Failure(Exit::files, "cannot lock " + path.string() + ": " + system_error(errno));
  return false;
}

}  // namespace

WriterLock::WriterLock(const std::filesystem::path &directory, std::chrono::seconds wait) {
  const std::filesystem::path path = directory / "velkorctl.lock";
  file_ = open_lock_file(path);
  const auto deadline = std::chrono::steady_clock::now() + wait;
  bool announced = false;
  while (!try_lock(file_, path)) {
    throw_if_interrupted();
    if (std::chrono::steady_clock::now() >= deadline)
      throw Failure(Exit::busy,
                    "another velkorctl" + holder(file_) + " is writing; use --wait to wait for it");
    if (!announced)
      say("waiting for another velkorctl" + holder(file_));
    announced = true;
    std::this_thread::sleep_for(pause);
  }
  write_own_number(file_);
}

}  // namespace velkor::ctl
