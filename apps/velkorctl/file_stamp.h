/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Tells whether a file has been replaced. */
#ifndef VELKORCTL_FILE_STAMP_H
#define VELKORCTL_FILE_STAMP_H

#include <filesystem>

#include <sys/stat.h>

namespace velkor::ctl {

/** Saving renames a new file over the old one, so a saved file is another file. */
class FileStamp {
public:
  explicit FileStamp(const std::filesystem::path &path) noexcept {
    struct stat status {};
    exists_ = stat(path.c_str(), &status) == 0;
    device_ = status.st_dev;
    number_ = status.st_ino;
    changed_ = status.st_ctim;
  }

  [[nodiscard]] bool operator==(const FileStamp &other) const noexcept {
    return exists_ == other.exists_ && device_ == other.device_ && number_ == other.number_ &&
           changed_.tv_sec == other.changed_.tv_sec && changed_.tv_nsec == other.changed_.tv_nsec;
  }

private:
  bool exists_ = false;
  dev_t device_{};
  ino_t number_{};
  timespec changed_{};
};

}  // namespace velkor::ctl

#endif
