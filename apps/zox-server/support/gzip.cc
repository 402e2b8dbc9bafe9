/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/support/gzip.h"

#include <array>
#include <stdexcept>

#include <zlib.h>

namespace velkor::server {
namespace {

constexpr int window_with_gzip_header = 15 + 16;

}  // namespace

std::string gzip(std::string_view content) {
  z_stream stream{};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, window_with_gzip_header, 8,
                   Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::runtime_error("cannot start compression");
  std::string packed(deflateBound(&stream, content.size()), '\0');
  stream.next_in = reinterpret_cast<const Bytef *>(content.data());
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef *>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  const int result = deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  if (result != Z_STREAM_END)
    throw std::runtime_error("cannot compress");
  return packed;
}

bool is_corrupt_gzip(std::string_view packed) {
  z_stream stream{};
  if (inflateInit2(&stream, window_with_gzip_header) != Z_OK)
    throw std::runtime_error("cannot start decompression");
  stream.next_in = reinterpret_cast<const Bytef *>(packed.data());
  stream.avail_in = static_cast<uInt>(packed.size());
  std::array<Bytef, 16384> text{};
  int result = Z_OK;
  while (result == Z_OK) {
    stream.next_out = text.data();
    stream.avail_out = static_cast<uInt>(text.size());
    result = inflate(&stream, Z_NO_FLUSH);
  }
  inflateEnd(&stream);
  return result == Z_DATA_ERROR;
}

}  // namespace velkor::server
