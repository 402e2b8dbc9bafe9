/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Lets one velkorctl at a time write in a cache directory. */
#ifndef VELKORCTL_WRITER_LOCK_H
#define VELKORCTL_WRITER_LOCK_H

#include <chrono>
#include <filesystem>

#include "velkorctl/descriptor.h"

namespace velkor::ctl {

class WriterLock {
public:
  /**
   * Locks the file "velkorctl.lock" in `directory`, which must exist, waiting at most so long
   * for another holder. Throws a Failure: files when the file cannot be made, busy when the
   * other one does not end in time, interrupted on SIGINT.
   */
  WriterLock(const std::filesystem::path &directory, std::chrono::seconds wait);

private:
  Descriptor file_;
};

}  // namespace velkor::ctl

#endif
