/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/deflate.h"

#include <glib.h>

namespace velkor {
namespace {

constexpr int raw_window = -MAX_WBITS;  // no header and no trailer of its own
/** What zlib tells of a stream that waits for its next block, with no bit left over. */
constexpr int between_blocks = 128;
constexpr int usual_memory = 8;

/** Bytes as zlib takes them; it does not write to those that it reads. */
Bytef *bytes(const char *text) noexcept {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  return reinterpret_cast<Bytef *>(const_cast<char *>(text));
}

/** zlib fails to set itself up only for want of memory, which GLib takes as fatal as well. */
void expect_memory(int result) noexcept {
  if (result != Z_OK)
    g_error("zlib: out of memory");
}

}  // namespace

Deflater::Deflater() noexcept {
  expect_memory(deflateInit2(&stream_, Z_BEST_COMPRESSION, Z_DEFLATED, raw_window, usual_memory,
                             Z_DEFAULT_STRATEGY));
}

std::string Deflater::part(std::string_view text, Part kind) noexcept {
  constexpr std::size_t flush_size = 16;  // what a flush may add to the bound for the text
  if (text.empty())
    return {};
  deflateReset(&stream_);
  std::string part(deflateBound(&stream_, text.size()) + flush_size, '\0');
  stream_.next_in = bytes(text.data());
  stream_.avail_in = static_cast<uInt>(text.size());
  stream_.next_out = bytes(part.data());
  stream_.avail_out = static_cast<uInt>(part.size());
  deflate(&stream_, kind == Part::last ? Z_FINISH : Z_FULL_FLUSH);
  part.resize(part.size() - stream_.avail_out);
  return part;
}

Inflater::Inflater() noexcept {
  expect_memory(inflateInit2(&stream_, raw_window));
}

bool Inflater::append(std::string_view part, std::size_t size, Deflater::Part kind,
                      std::string &text) noexcept {
  constexpr std::size_t max_ratio = 1040;  // of deflate, rounded up: no room is made for more
  if (size == 0 || size > max_ratio * part.size())
    return size == 0 && part.empty();
  inflateReset(&stream_);
  const std::size_t before = text.size();
  text.resize(before + size);
  stream_.next_in = bytes(part.data());
  stream_.avail_in = static_cast<uInt>(part.size());
  stream_.next_out = bytes(text.data() + before);
  stream_.avail_out = static_cast<uInt>(size);
  int result = inflate(&stream_, Z_SYNC_FLUSH);
  if (stream_.avail_out > 0)
    return false;
  // The mark that ends the part may still be ahead; a byte of text there is one too many.
  char surplus = 0;
  stream_.next_out = bytes(&surplus);
  stream_.avail_out = 1;
  if (result == Z_OK && stream_.avail_in > 0)
    result = inflate(&stream_, Z_SYNC_FLUSH);
  if (stream_.avail_in > 0 || stream_.avail_out == 0)
    return false;
  return kind == Deflater::Part::last ? result == Z_STREAM_END
                                      : result == Z_OK && stream_.data_type == between_blocks;
}

}  // namespace velkor
