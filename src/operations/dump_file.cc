/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "operations/dump_file.h"

#include <array>
#include <cstring>
#include <memory>

#include <unistd.h>
#include <zlib.h>

namespace velkor {
namespace {

constexpr unsigned block_size = 1023;
constexpr unsigned buffer_size = 128 * 1024;

using OwnedGzip = std::unique_ptr<gzFile_s, ReleaseWith<gzclose>>;

/** Closes the stream; false when its data broke off before its end. */
bool ends_properly(OwnedGzip file) noexcept {
  return gzclose_r(file.release()) == Z_OK;
}

}  // namespace

OwnedString read_dump(Descriptor descriptor, std::size_t max_size) noexcept {
  if (!descriptor || lseek(descriptor.get(), 0, SEEK_SET) != 0)
    return nullptr;
  OwnedGzip file(gzdopen(descriptor.get(), "rb"));
  if (!file)
    return nullptr;
  static_cast<void>(descriptor.release());  // the stream closes it
  gzbuffer(file.get(), buffer_size);
  OwnedString text(g_string_new(nullptr));
  std::array<char, block_size> block{};
  int length = 0;
  while ((length = gzread(file.get(), block.data(), block_size)) > 0) {
    const std::size_t bytes = strnlen(block.data(), static_cast<std::size_t>(length));
    if (text->len + bytes > max_size)
      return nullptr;
    g_string_append_len(text.get(), block.data(), static_cast<gssize>(bytes));
  }
  return length == 0 && ends_properly(std::move(file)) ? std::move(text) : nullptr;
}

}  // namespace velkor
