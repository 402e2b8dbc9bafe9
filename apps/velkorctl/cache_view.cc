/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/cache_view.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include <glib.h>
#include <unistd.h>

#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

/** The session's own directory is in memory: it works even when the disks are full. */
fs::path temporary_directory() {
  const char *session = g_getenv("XDG_RUNTIME_DIR");
  const bool usable = session != nullptr && access(session, W_OK | X_OK) == 0;
  return usable ? session : g_get_tmp_dir();
}

bool belongs_to_velkor(const fs::path &file) {
  return file.filename().string().starts_with("velkor.");
}

void link_files(const fs::path &from, const fs::path &to) {
  std::error_code error;
  for (const auto &entry : fs::directory_iterator(from, error))
    if (belongs_to_velkor(entry.path()) && !error)
      fs::create_symlink(entry.path(), to / entry.path().filename(), error);
  if (error && error != std::errc::no_such_file_or_directory)
    throw Failure(Exit::files, "cannot read " + from.string() + ": " + error.message());
}

}  // namespace

CacheView::CacheView() {
  std::string pattern = (temporary_directory() / "velkorctl-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr)
    throw Failure(Exit::files, "cannot create " + pattern + ": " + system_error(errno));
  path_ = pattern;
}

// After the delegated constructor, the destructor runs even if this one throws.
CacheView::CacheView(const fs::path &directory) : CacheView() {
  link_files(fs::absolute(directory), path_);
}

void CacheView::detach() const noexcept {
  std::error_code ignored;
  for (const auto &entry : fs::directory_iterator(path_, ignored))
    fs::remove(entry.path(), ignored);
}

CacheView::~CacheView() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace velkor::ctl
