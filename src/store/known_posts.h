/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * What this process knows of the cache file of the postings since it read or wrote it last, so that
 * what has not changed is neither read nor written again.
 */
#ifndef VELKOR_STORE_KNOWN_POSTS_H
#define VELKOR_STORE_KNOWN_POSTS_H

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <glib.h>

#include "core/file_identity.h"
#include "store/posts_layout.h"
#include "support/descriptor.h"

namespace velkor {

/** A section that holds at least one posting. */
struct KnownSection {
  PostsSection section;
  std::uint64_t offset = 0;
  std::uint64_t fingerprint = 0;  // of its compressed bytes
  gint32 first_id = 0;
};

struct KnownPosts {
  std::string path;
  FileIdentity identity;
  PostsLayout layout;
  /** In the order of the file, which is that of the posting ids. */
  std::vector<KnownSection> sections;
  /** What stands behind the last section. */
  std::string end;
};

/**
 * The one cache file of the process. Whoever loads or saves holds it from beginning to end, taken
 * before the list's lock: an older list never replaces a newer one.
 */
class PostsFile {
public:
  PostsFile() noexcept;
  PostsFile(const PostsFile &) = delete;
  PostsFile &operator=(const PostsFile &) = delete;

  /** What is known of the file at `path`; null for nothing. */
  [[nodiscard]] const KnownPosts *known(const std::string &path) const noexcept;
  void remember(KnownPosts posts) noexcept;
  void forget() noexcept;

private:
  struct Memory;

  Memory &memory_;
  std::unique_lock<std::mutex> lock_;
};

/** A file that is read at places of one's choice, by several threads. */
class PlacedReader {
public:
  explicit PlacedReader(const std::string &path) noexcept;

  [[nodiscard]] std::optional<FileIdentity> identity() const noexcept {
    return file_ ? FileIdentity::of(file_.get()) : std::nullopt;
  }
  /** Reads so many bytes; false when the file has fewer or cannot be read. */
  bool read(std::uint64_t offset, std::size_t size, std::string &bytes) const noexcept;

private:
  Descriptor file_;
};

/** A number that stands for bytes within this process; much cheaper than their CRC-32. */
std::uint64_t fingerprint_of(std::string_view bytes) noexcept;

/** Reads the compressed bytes of a section; false when they are others than those known. */
bool read_known(const PlacedReader &file, const KnownSection &section, std::string &bytes) noexcept;

/** Whether the file is the one known, to the last byte. */
bool is_unchanged(const PlacedReader &file, const KnownPosts &posts) noexcept;

}  // namespace velkor

#endif
