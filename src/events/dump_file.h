/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A downloaded dump in its temporary file. */
#ifndef VELKOR_EVENTS_DUMP_FILE_H
#define VELKOR_EVENTS_DUMP_FILE_H

#include "support/owned.h"

namespace velkor {

/** Removes the file that it names at the end of its life. */
class TemporaryFile {
public:
  TemporaryFile() = default;
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile &) = delete;
  TemporaryFile &operator=(const TemporaryFile &) = delete;

  /** Where a newly allocated name is to be put. */
  [[nodiscard]] char **place() noexcept { return &name_; }
  [[nodiscard]] const char *name() const noexcept { return name_; }

private:
  char *name_ = nullptr;
};

/**
 * Decompresses a dump in blocks of 1023 bytes; a zero byte cuts the block that holds it. A file
 * that is not gzip at all is taken as it stands.
 * @return the text; null when the gzip data is broken or incomplete, or makes more than 1 GiB
 */
OwnedString read_dump(const char *path) noexcept;

}  // namespace velkor

#endif
