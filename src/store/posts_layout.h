/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * How the cache file of the postings is laid out: one gzip member (RFC 1952) whose deflate stream
 * consists of parts that can each be inflated alone. The first holds the document's beginning, the
 * last its end, and those between are sections of whole postings in the order of their ids. Every
 * part but the last ends with a full flush. Any reader of gzip files reads the whole; this library
 * reads, keeps and replaces single sections by a table in the header's extra field:
 *
 *   subfield "Zs", all numbers little-endian:
 *     1 byte   version, 1
 *     3 bytes  0
 *     4 bytes  CRC-32 of what follows
 *     8 bytes  seed of the digests
 *     4 bytes  compressed size of the first part
 *     4 bytes  compressed size of the last part
 *     for each section 4 bytes its compressed size, 4 bytes the size of its text, 4 bytes the
 * CRC-32 of its text, 8 bytes the digest of its postings
 *
 * A section begins where the one before ends. Its digest is 0 when reading the text does not give
 * the very postings that it was written from.
 */
#ifndef VELKOR_STORE_POSTS_LAYOUT_H
#define VELKOR_STORE_POSTS_LAYOUT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor {

struct PostsSection {
  std::uint32_t compressed_size = 0;
  std::uint32_t text_size = 0;
  std::uint32_t checksum = 0;
  std::uint64_t digest = 0;
};

struct PostsLayout {
  std::uint64_t seed = 0;
  std::uint32_t first_size = 0;
  std::uint32_t last_size = 0;
  std::vector<PostsSection> sections;
};

/* The document's text before and behind the sections. */
inline constexpr std::string_view document_begin = "<?xml version=\"1.0\"?>\n<Events>\n";
inline constexpr std::string_view document_end = "</Events>\n";

/** The most sections that a header has room for. */
extern const std::size_t max_sections;

/** The size of the header for so many sections. */
std::size_t header_size(std::size_t sections) noexcept;

/** The gzip header with the table. */
std::string encode_header(const PostsLayout &layout) noexcept;

/** The table in the header at the start of `bytes`; nothing when there is none that is valid. */
std::optional<PostsLayout> decode_header(std::string_view bytes) noexcept;

/** What stands behind the deflate stream: checksum and size of the whole text. */
std::string encode_trailer(const PostsLayout &layout) noexcept;

/** The size of the whole file. */
std::uint64_t file_size(const PostsLayout &layout) noexcept;

}  // namespace velkor

#endif
