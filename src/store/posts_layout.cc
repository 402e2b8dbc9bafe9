/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/posts_layout.h"

#include <zlib.h>

#include "store/deflate.h"

namespace velkor {
namespace {

/* Of RFC 1952: the marks, deflate, an extra field, no time, best compression, Unix. */
constexpr std::string_view gzip_begin("\x1f\x8b\x08\x04\0\0\0\0\x02\x03", 10);
constexpr std::string_view subfield_id("Zs", 2);
constexpr std::string_view version("\x01\0\0\0", 4);
constexpr std::size_t max_extra_size = 0xffff;

constexpr std::size_t extra_begin = gzip_begin.size() + 2;
constexpr std::size_t subfield_begin = extra_begin + subfield_id.size() + 2;
constexpr std::size_t table_begin = subfield_begin + version.size() + 4;
constexpr std::size_t entries_begin = table_begin + 8 + 4 + 4;
constexpr std::size_t entry_size = 4 + 4 + 4 + 8;

template <typename Number>
void append(std::string &bytes, Number number) noexcept {
  for (std::size_t byte = 0; byte < sizeof(Number); ++byte)
    bytes.push_back(static_cast<char>(number >> (8 * byte)));
}

/** Takes numbers from the front of `bytes`, which has enough of them. */
template <typename Number>
Number take(std::string_view &bytes) noexcept {
  Number number = 0;
  for (std::size_t byte = 0; byte < sizeof(Number); ++byte)
    number |= static_cast<Number>(static_cast<Number>(static_cast<unsigned char>(bytes[byte]))
                                  << (8 * byte));
  bytes.remove_prefix(sizeof(Number));
  return number;
}

std::string encode_table(const PostsLayout &layout) noexcept {
  std::string table;
  append(table, layout.seed);
  append(table, layout.first_size);
  append(table, layout.last_size);
  for (const PostsSection &section : layout.sections) {
    append(table, section.compressed_size);
    append(table, section.text_size);
    append(table, section.checksum);
    append(table, section.digest);
  }
  return table;
}

PostsLayout decode_table(std::string_view table) noexcept {
  PostsLayout layout;
  layout.seed = take<std::uint64_t>(table);
  layout.first_size = take<std::uint32_t>(table);
  layout.last_size = take<std::uint32_t>(table);
  layout.sections.reserve(table.size() / entry_size);
  while (!table.empty()) {
    PostsSection &section = layout.sections.emplace_back();
    section.compressed_size = take<std::uint32_t>(table);
    section.text_size = take<std::uint32_t>(table);
    section.checksum = take<std::uint32_t>(table);
    section.digest = take<std::uint64_t>(table);
  }
  return layout;
}

}  // namespace

const std::size_t max_sections = (max_extra_size - (entries_begin - extra_begin)) / entry_size;

std::size_t header_size(std::size_t sections) noexcept {
  return entries_begin + sections * entry_size;
}

std::string encode_header(const PostsLayout &layout) noexcept {
  const std::string table = encode_table(layout);
  const std::size_t subfield_size = table_begin - subfield_begin + table.size();
  std::string bytes(gzip_begin);
  append(bytes, static_cast<std::uint16_t>(subfield_begin - extra_begin + subfield_size));
  bytes += subfield_id;
  append(bytes, static_cast<std::uint16_t>(subfield_size));
  bytes += version;
  append(bytes, checksum_of(table));
  return bytes + table;
}

std::optional<PostsLayout> decode_header(std::string_view bytes) noexcept {
  if (bytes.size() < entries_begin || !bytes.starts_with(gzip_begin))
    return std::nullopt;
  std::string_view rest = bytes.substr(gzip_begin.size());
  const auto extra_size = take<std::uint16_t>(rest);
  if (rest.size() < extra_size || !rest.starts_with(subfield_id))
    return std::nullopt;
  rest = rest.substr(subfield_id.size(), extra_size - subfield_id.size());
  // No other subfield may stand beside the table: the writer makes none.
  if (take<std::uint16_t>(rest) != rest.size() || !rest.starts_with(version))
    return std::nullopt;
  rest.remove_prefix(version.size());
  const auto checksum = take<std::uint32_t>(rest);
  const std::size_t fixed_size = entries_begin - table_begin;
  if (rest.size() < fixed_size || (rest.size() - fixed_size) % entry_size != 0 ||
      checksum != checksum_of(rest))
    return std::nullopt;
  return decode_table(rest);
}

std::string encode_trailer(const PostsLayout &layout) noexcept {
  uLong checksum = checksum_of(document_begin);
  std::uint64_t size = document_begin.size();
  const auto add = [&](std::uint32_t part_checksum, std::uint64_t part_size) {
    checksum = crc32_combine(checksum, part_checksum, static_cast<z_off_t>(part_size));
    size += part_size;
  };
  for (const PostsSection &section : layout.sections)
    add(section.checksum, section.text_size);
  add(checksum_of(document_end), document_end.size());
  std::string bytes;
  append(bytes, static_cast<std::uint32_t>(checksum));
  append(bytes, static_cast<std::uint32_t>(size));
  return bytes;
}

std::uint64_t file_size(const PostsLayout &layout) noexcept {
  constexpr std::uint64_t trailer_size = 8;
  std::uint64_t size =
      header_size(layout.sections.size()) + layout.first_size + layout.last_size + trailer_size;
  for (const PostsSection &section : layout.sections)
    size += section.compressed_size;
  return size;
}

}  // namespace velkor
