/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Deflate streams (RFC 1951) in parts that can each be inflated alone. */
#ifndef VELKOR_STORE_DEFLATE_H
#define VELKOR_STORE_DEFLATE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <zlib.h>

namespace velkor {

/** CRC-32 as gzip files have it. */
inline std::uint32_t checksum_of(std::string_view bytes) noexcept {
  return static_cast<std::uint32_t>(
      crc32_z(0, reinterpret_cast<const Bytef *>(bytes.data()), bytes.size()));
}

/** Compresses one part after the other, at level 9. */
class Deflater {
public:
  enum class Part { inner, last };

  Deflater() noexcept;
  ~Deflater() { deflateEnd(&stream_); }
  Deflater(const Deflater &) = delete;
  Deflater &operator=(const Deflater &) = delete;

  /**
   * The text, of less than 4 GiB, as a part of a stream: an inner one ends on a whole byte, the
   * last one ends the stream. A text without characters gives no bytes.
   */
  std::string part(std::string_view text, Part kind) noexcept;

private:
  z_stream stream_{};
};

/** Inflates one part after the other. */
class Inflater {
public:
  Inflater() noexcept;
  ~Inflater() { inflateEnd(&stream_); }
  Inflater(const Inflater &) = delete;
  Inflater &operator=(const Inflater &) = delete;

  /**
   * Appends the text of a part to `text`.
   * @return false when the part is damaged, or does not have exactly `size` bytes of text
   */
  bool append(std::string_view part, std::size_t size, Deflater::Part kind,
              std::string &text) noexcept;

private:
  z_stream stream_{};
};

}  // namespace velkor

#endif
