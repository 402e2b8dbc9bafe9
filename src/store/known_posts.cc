/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/known_posts.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "support/immortal.h"
#include "support/parallel.h"

namespace velkor {

struct PostsFile::Memory {
  std::mutex mutex;
  std::optional<KnownPosts> posts;
};

namespace {

bool is_at(const PlacedReader &file, std::uint64_t offset, const std::string &expected) noexcept {
  std::string bytes;
  return file.read(offset, expected.size(), bytes) && bytes == expected;
}

bool are_all_known(const PlacedReader &file, const std::vector<KnownSection> &sections) noexcept {
  return share_out(sections.size(), [&] {
    return [&, bytes = std::string()](std::size_t number) mutable {
      return read_known(file, sections[number], bytes);
    };
  });
}

}  // namespace

PostsFile::PostsFile() noexcept : memory_(immortal<Memory>()), lock_(memory_.mutex) {}

const KnownPosts *PostsFile::known(const std::string &path) const noexcept {
  return memory_.posts && memory_.posts->path == path ? &*memory_.posts : nullptr;
}

void PostsFile::remember(KnownPosts posts) noexcept {
  memory_.posts = std::move(posts);
}

void PostsFile::forget() noexcept {
  memory_.posts.reset();
}

PlacedReader::PlacedReader(const std::string &path) noexcept
    : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}

bool PlacedReader::read(std::uint64_t offset, std::size_t size, std::string &bytes) const noexcept {
  bytes.resize(size);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count =
        pread(file_.get(), bytes.data() + done, size - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR)
      continue;
    if (count <= 0)
      return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

std::uint64_t fingerprint_of(std::string_view bytes) noexcept {
  return XXH3_64bits(bytes.data(), bytes.size());
}

bool read_known(const PlacedReader &file, const KnownSection &section,
                std::string &bytes) noexcept {
  return file.read(section.offset, section.section.compressed_size, bytes) &&
         fingerprint_of(bytes) == section.fingerprint;
}

bool is_unchanged(const PlacedReader &file, const KnownPosts &posts) noexcept {
  return file.identity() == posts.identity && is_at(file, 0, encode_header(posts.layout)) &&
         is_at(file, static_cast<std::uint64_t>(posts.identity.size) - posts.end.size(),
               posts.end) &&
         are_all_known(file, posts.sections);
}

}  // namespace velkor
