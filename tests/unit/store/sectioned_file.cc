/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/unit/store/sectioned_file.h"

#include <stdexcept>

#include <zlib.h>

#include "store/deflate.h"

namespace velkor::test {
namespace {

/** A part that can be inflated alone, at any level. */
std::string part_of(const std::string &text, int level) {
  z_stream stream{};
  if (deflateInit2(&stream, level, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::runtime_error("deflateInit2");
  std::string part(deflateBound(&stream, text.size()) + 64, '\0');
  stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(text.data()));
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef *>(part.data());
  stream.avail_out = static_cast<uInt>(part.size());
  deflate(&stream, Z_FULL_FLUSH);
  part.resize(stream.total_out);
  deflateEnd(&stream);
  return part;
}

}  // namespace

std::string sectioned_file(const std::vector<SectionText> &sections, std::uint64_t seed) {
  const std::string first = Deflater().part(document_begin, Deflater::Part::inner);
  const std::string last = Deflater().part(document_end, Deflater::Part::last);
  PostsLayout layout{
      seed, static_cast<std::uint32_t>(first.size()), static_cast<std::uint32_t>(last.size()), {}};
  std::string middle;
  for (const SectionText &section : sections) {
    const std::string part = part_of(section.text, section.level);
    layout.sections.push_back({static_cast<std::uint32_t>(part.size()),
                               static_cast<std::uint32_t>(section.text.size()),
                               checksum_of(section.text), section.digest});
    middle += part;
  }
  return encode_header(layout) + first + middle + last + encode_trailer(layout);
}

PostsLayout layout_of(const std::string &bytes) {
  return decode_header(bytes).value();
}

std::size_t offset_of(const PostsLayout &layout, std::size_t section) {
  std::size_t offset = header_size(layout.sections.size()) + layout.first_size;
  for (std::size_t number = 0; number < section; ++number)
    offset += layout.sections[number].compressed_size;
  return offset;
}

}  // namespace velkor::test
