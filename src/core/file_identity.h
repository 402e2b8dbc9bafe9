/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Whether a file is still the one that was read or written before. */
#ifndef VELKOR_CORE_FILE_IDENTITY_H
#define VELKOR_CORE_FILE_IDENTITY_H

#include <optional>

#include <sys/stat.h>

namespace velkor {

/** What changes when a file is replaced or written to. */
struct FileIdentity {
  dev_t device = 0;
  ino_t number = 0;
  off_t size = 0;
  time_t seconds = 0;
  long nanoseconds = 0;

  bool operator==(const FileIdentity &) const noexcept = default;

  /** That of the file behind a descriptor; nothing when the system does not tell. */
  static std::optional<FileIdentity> of(int descriptor) noexcept {
    struct stat status {};
    if (fstat(descriptor, &status) != 0)
      return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                        status.st_mtim.tv_nsec};
  }
};

}  // namespace velkor

#endif
