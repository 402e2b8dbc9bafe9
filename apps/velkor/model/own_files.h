/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The files that only this program reads and writes. */
#ifndef VELKOR_APP_MODEL_OWN_FILES_H
#define VELKOR_APP_MODEL_OWN_FILES_H

#include <filesystem>

namespace velkor::app {

struct OwnFiles {
  explicit OwnFiles(const std::filesystem::path &directory)
      : window(directory / "window.ini"), servers(directory / "servers.ini"),
        read_marks(directory / "read-messages") {}

  std::filesystem::path window;      // what the window looks like
  std::filesystem::path servers;     // the servers that the user has chosen
  std::filesystem::path read_marks;  // which messages have been read
};

}  // namespace velkor::app

#endif
