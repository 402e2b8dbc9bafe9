/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The cache directory: that it is there, and who may use it. */
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

#include "velkorctl/doctor/examination.h"

namespace velkor::ctl::doctor {
namespace {

namespace fs = std::filesystem;

/** The settings hold a password. */
Findings check_secrecy(const fs::path &directory) {
  struct stat status {};
  const fs::path settings = directory / "velkor.conf";
  constexpr mode_t others = S_IRWXG | S_IRWXO;
  if (stat(settings.c_str(), &status) != 0 || (status.st_mode & others) == 0)
    return {};
  return {{"rights", "others than the owner may use " + settings.string(),
           "run chmod 600 on it, and choose a new password if others use this computer"}};
}

}  // namespace

Findings check_directory(const fs::path &directory) {
  constexpr const char *subject = "directory";
  if (access((directory / ".").c_str(), R_OK | W_OK | X_OK) != 0) {
    const int error = errno;
    if (error == ENOENT)
      return {{subject, directory.string() + " does not exist yet; the first update makes it"}};
    return {{subject, directory.string() + " cannot be used: " + system_error(error),
             "give your user the right to read and write it, or choose another one with "
             "--cache-dir"}};
  }
  Findings findings{{subject, directory.string() + " can be read and written"}};
  const Findings secrecy = check_secrecy(directory);
  findings.insert(findings.end(), secrecy.begin(), secrecy.end());
  return findings;
}

}  // namespace velkor::ctl::doctor
