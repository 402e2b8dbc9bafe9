/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading, writing and copying whole files. */
#include <velkor/zox_file.h>

#include <array>
#include <cstring>
#include <memory>
#include <string>

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include "core/atomic_file.h"
#include "core/cache_path.h"
#include "support/assertion.h"
#include "support/descriptor.h"
#include "support/owned.h"
#include "support/text.h"

namespace velkor {
namespace {

using Block = std::array<char, 32767>;
using OwnedGzip = std::unique_ptr<gzFile_s, ReleaseWith<gzclose>>;

/** What is left in a plain file; a zero byte cuts the line that holds it. */
OwnedString read_lines(std::FILE *file) noexcept {
  OwnedString text(g_string_new(""));
  Block block;
  while (std::fgets(block.data(), block.size(), file) != nullptr)
    g_string_append(text.get(), block.data());
  return text;
}

/** The text of a gzip file; a zero byte cuts the block that holds it. */
OwnedString read_gzip(const std::string &path) noexcept {
  OwnedString text(g_string_new(""));
  const OwnedGzip file(gzopen(path.c_str(), "rbe"));
  Block block;
  int length = 0;
  while (file && (length = gzread(file.get(), block.data(), block.size() - 1)) > 0)
    g_string_append_len(text.get(), block.data(),
                        static_cast<gssize>(strnlen(block.data(), static_cast<size_t>(length))));
  return text;
}

/** Copies what is left in `source`; a write that fails or falls short is passed over. */
void copy_bytes(int source, int target) noexcept {
  Block block;
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
  const std::string plain_path = cache_path(filename, false);
  if (const OwnedFile file{std::fopen(plain_path.c_str(), "re")}) {
    OwnedString text = read_lines(file.get());
    // What an earlier version left uncompressed is compressed at the next save.
    if (compressed != 0 && std::ferror(file.get()) == 0)
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
  AtomicFile file(cache_path(filename, compressed != 0),
                  compressed != 0 ? AtomicFile::Form::gzip : AtomicFile::Form::plain);
  if (compressed != 0) {
    replace_content(file, {view_of(text)}, __func__);
    return 0;
  }
  return replace_content(file, {text->str, "\n"}, __func__) ? 0 : -1;
}

gint32 zox_file_copy(const char *from, const char *to) {
  const Descriptor source(open(from, O_RDONLY | O_CLOEXEC));
  if (!source)
    return 1;
  const Descriptor target(open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
  if (!target)
    return 1;
  copy_bytes(source.get(), target.get());
  return 0;
}

}  // extern "C"
