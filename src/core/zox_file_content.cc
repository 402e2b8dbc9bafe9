/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading, writing and copying whole files. */
#include <velkor/zox_file.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include "core/app_core.h"
#include "core/atomic_file.h"
#include "core/cache_directory.h"
#include "core/file_outcome.h"
#include "core/link_target.h"
#include "support/assertion.h"
#include "support/descriptor.h"
#include "support/owned.h"
#include "support/text.h"

namespace velkor {
namespace {

using Block = std::array<char, 32767>;
using OwnedGzip = std::unique_ptr<gzFile_s, ReleaseWith<gzclose>>;

/** The outcome for a file that was read to its end. */
FileOutcome read_outcome(const std::string &path, const GString *text) noexcept {
  return {text->len == 0 ? ZOX_FILE_EMPTY : ZOX_FILE_FINE, 0, path};
}

/** The text of a plain file, null when it cannot be opened; a zero byte cuts the line that holds
 * it.
 */
OwnedString read_plain(const std::string &path) noexcept {
  const OwnedFile file(std::fopen(path.c_str(), "re"));
  if (!file) {
    set_file_outcome(unopened_outcome(path, errno));
    return nullptr;
  }
  OwnedString text(g_string_new(""));
  Block block{};
  while (std::fgets(block.data(), block.size(), file.get()) != nullptr)
    g_string_append(text.get(), block.data());
  const int error = errno;
  set_file_outcome(std::ferror(file.get()) == 0 ? read_outcome(path, text.get())
                                                : failed_outcome(ZOX_FILE_UNREADABLE, path, error));
  return text;
}

/** The outcome at the end of a gzip file; zlib's words begin with the path. */
FileOutcome gzip_outcome(gzFile file, const std::string &path, const GString *text) noexcept {
  const int error = errno;
  int code = Z_OK;
  std::string reason = gzerror(file, &code);
  if (code == Z_OK)
    return read_outcome(path, text);
  if (code == Z_ERRNO)
    return failed_outcome(ZOX_FILE_UNREADABLE, path, error);
  if (reason.starts_with(path + ": "))
    reason.erase(0, path.size() + 2);
  return {ZOX_FILE_DAMAGED, 0, path, reason};
}

/** The text of a gzip file; a zero byte cuts the block that holds it. */
OwnedString read_gzip(const std::string &path) noexcept {
  OwnedString text(g_string_new(""));
  const OwnedGzip file(gzopen(path.c_str(), "rbe"));
  if (!file) {
    set_file_outcome(unopened_outcome(path, errno));
    return text;
  }
  Block block{};
  int length = 0;
  while ((length = gzread(file.get(), block.data(), block.size() - 1)) > 0)
    g_string_append_len(text.get(), block.data(),
                        static_cast<gssize>(strnlen(block.data(), static_cast<size_t>(length))));
  set_file_outcome(gzip_outcome(file.get(), path, text.get()));
  return text;
}

/** Copies what is left in `source`; a write that fails or falls short is passed over. */
void copy_bytes(int source, int target) noexcept {
  Block block{};
  ssize_t length = 0;
  while ((length = read(source, block.data(), block.size())) > 0)
    [[maybe_unused]] const ssize_t written =
        write(target, block.data(), static_cast<size_t>(length));
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_file_load(const char *filename, gint32 compressed) {
  ZOX_ASSERT(filename);
  begin_file_operation();
  const std::string plain_path = cache_path(filename, false);
  if (OwnedString text = read_plain(plain_path)) {
    // What an earlier version left uncompressed is compressed at the next save.
    if (compressed != 0 && file_outcome().status != ZOX_FILE_UNREADABLE && !read_only())
      unlink(plain_path.c_str());
    return text.release();
  }
  if (compressed == 0)
    return nullptr;
  return read_gzip(cache_path(filename, true)).release();
}

gint32 zox_file_save(const char *filename, const ZoxString *text, gint32 compressed) {
  ZOX_ASSERT(filename);
  ZOX_ASSERT_AS(text, "tekst");
  begin_file_operation();
  AtomicFile file(cache_path(filename, compressed != 0),
                  compressed != 0 ? AtomicFile::Form::gzip : AtomicFile::Form::plain);
  if (compressed != 0) {
    replace_content(file, {view_of(text)}, __func__);
    return 0;
  }
  return replace_content(file, {text->str, "\n"}, __func__) ? 0 : -1;
}

gint32 zox_file_copy(const char *from, const char *to) {
  begin_file_operation();
  const Descriptor source(open(from, O_RDONLY | O_CLOEXEC));
  if (!source) {
    set_file_outcome(unopened_outcome(from, errno));
    return 1;
  }
  if (read_only()) {
    set_file_outcome(refused_outcome(to));
    return 1;
  }
  if (const int error = follow_links(to).error; error != 0) {
    set_file_outcome(failed_outcome(ZOX_FILE_NOT_WRITTEN, to, error));
    return 1;
  }
  const Descriptor target(open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
  if (!target) {
    set_file_outcome(failed_outcome(ZOX_FILE_NOT_WRITTEN, to, errno));
    return 1;
  }
  copy_bytes(source.get(), target.get());
  return 0;
}

}  // extern "C"
