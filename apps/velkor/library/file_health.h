/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Which files of the cache could not be read. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_FILE_HEALTH_H
#define VELKOR_APP_LIBRARY_FILE_HEALTH_H

#include <vector>

#include "model/cached_files.h"

namespace velkor::app {

class FileHealth {
public:
  /** Loads what the core was opened without, and notes how each file was read. */
  void load_parts();
  /** Takes note of the file that this thread has read or written last. */
  void note();

  /** The files of the cache directory, which is that of the core. */
  [[nodiscard]] std::vector<CachedFile> files() const;

private:
  FileProblems problems_;
};

}  // namespace velkor::app

#endif
