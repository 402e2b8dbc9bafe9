/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/file_health.h"

#include <filesystem>

#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>

#include "model/shown_text.h"
#include "support/owned.h"

namespace velkor::app {

void FileHealth::load_parts() {
  for (const guint32 part : {ZOX_CORE_FILTERS, ZOX_CORE_TABLES, ZOX_CORE_MAIL, ZOX_CORE_POSTINGS}) {
    zox_app_core_load(part);
    note();
  }
}

/** A file that could not be written is as it was. */
void FileHealth::note() {
  const ZoxFileError &outcome = *zox_file_last_error();
  if (outcome.path == nullptr || outcome.status == ZOX_FILE_NOT_WRITTEN)
    return;
  const std::string name = std::filesystem::path(outcome.path).filename();
  if (outcome.status == ZOX_FILE_DAMAGED || outcome.status == ZOX_FILE_UNREADABLE)
    problems_[name] = shown_line(outcome.message);
  else
    problems_.erase(name);
}

std::vector<CachedFile> FileHealth::files() const {
  const OwnedText directory(zox_file_parse_cache_filename(nullptr, 0));
  return cached_files(directory.get(), problems_);
}

}  // namespace velkor::app
