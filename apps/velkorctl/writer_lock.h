/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Lets only one velkorctl at a time write in a cache directory. */
#ifndef VELKORCTL_WRITER_LOCK_H
#define VELKORCTL_WRITER_LOCK_H

#include <chrono>
#include <filesystem>

#include "support/descriptor.h"

namespace velkor::ctl {

class WriterLock {
public:
  /**
   * Locks the file "velkorctl.lock" in `directory`, which must exist; waits up to `wait` for
   * another holder. Throws a Failure: files when the file cannot be created or is a link, busy when
   * the lock is still held after `wait`, interrupted on SIGINT, SIGTERM or SIGHUP.
   */
  WriterLock(const std::filesystem::path &directory, std::chrono::seconds wait);

private:
  Descriptor file_;
};

}  // namespace velkor::ctl

#endif
