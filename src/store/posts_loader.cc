/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/posts_loader.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "support/parallel.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

/** The first and the last part of the file hold no posting; what they hold is known. */
bool is_frame(const PlacedReader &file, const PostsLayout &layout) noexcept {
  Inflater inflater;
  std::string compressed;
  std::string text;
  const std::uint64_t begin = header_size(layout.sections.size());
  if (!file.read(begin, layout.first_size, compressed) ||
      !inflater.append(compressed, document_begin.size(), Deflater::Part::inner, text) ||
      text != document_begin)
    return false;
  constexpr std::size_t trailer_size = 8;
  const std::uint64_t end = file_size(layout) - trailer_size;
  text.clear();
  return file.read(end - layout.last_size, layout.last_size, compressed) &&
         inflater.append(compressed, document_end.size(), Deflater::Part::last, text) &&
         text == document_end && file.read(end, trailer_size, compressed) &&
         compressed == encode_trailer(layout);
}

/** The table of a file whose parts outside the sections are in order. */
std::optional<PostsLayout> read_layout(const PlacedReader &file, std::uint64_t size) noexcept {
  std::string start;
  const auto most = std::min<std::uint64_t>(size, header_size(max_sections));
  if (!file.read(0, most, start))
    return std::nullopt;
  std::optional<PostsLayout> layout = decode_header(start);
  if (!layout || file_size(*layout) != size || !is_frame(file, *layout))
    return std::nullopt;
  return layout;
}

/** Calls `read(reader, number)` for all numbers below `count` on several threads, until one fails.
 */
template <typename Read>
bool read_all(std::size_t count, std::uint64_t seed, const Read &read) noexcept {
  return share_out(count, [&] {
    return [&read, reader = SectionReader(seed)](std::size_t number) mutable {
      return read(reader, number);
    };
  });
}

/** The sections that hold postings, each at its place in the file. */
std::vector<KnownSection> place_sections(const PostsLayout &layout) noexcept {
  std::vector<KnownSection> placed;
  std::uint64_t offset = header_size(layout.sections.size()) + layout.first_size;
  for (const PostsSection &section : layout.sections) {
    if (section.text_size > 0)
      placed.push_back({section, offset});
    offset += section.compressed_size;
  }
  return placed;
}

/** Completes what is known of a section by what was read; false when it is not in order. */
bool complete(KnownSection &known, const SectionContent &content) noexcept {
  if (content.objects.empty() || !content.ordered)
    return false;
  known.first_id = content.objects.front()->event->postId;
  // With a remark, or when reading does not give what was written, the text is not to be kept.
  if (content.digest != known.section.digest || !content.remarks.empty())
    known.section.digest = no_digest;
  return true;
}

/** Whether the sections follow each other in the order of their ids. */
bool are_ordered(const std::vector<SectionContent> &contents) noexcept {
  return std::ranges::adjacent_find(contents, [](const auto &left, const auto &right) {
           return left.objects.back()->event->postId >= right.objects.front()->event->postId;
         }) == contents.end();
}

/**
 * Whether nobody but its list and the snapshot knows the object: no other reference, and nothing
 * attached to it. Without details, no one can tell it from a new object.
 */
bool is_known_to_nobody(ZOXEventObject &object) noexcept {
  constexpr guint own_references = 2;
  return std::atomic_ref(object.parent.ref_count).load(std::memory_order_acquire) ==
             own_references &&
         g_atomic_pointer_get(&object.parent.qdata) == nullptr;
}

/** An object with the entry's posting as it is after reading, which the digest takes in. */
OwnedEventObject renewed(const OrderedEntry &entry, EventDigest &digest) noexcept {
  ZOXEventObject &object = *entry.object;
  const ReadLock lock(object.lock);
  digest.add(*object.event);
  if (is_known_to_nobody(object) && is_without_details(*object.event))
    return OwnedEventObject(static_cast<ZOXEventObject *>(g_object_ref(&object)));
  return new_object(without_details(*object.event));
}

/**
 * The postings of a section as the list has them.
 * @return nothing when they are not what the section holds in the file
 */
std::optional<SectionContent> take_postings(std::span<OrderedEntry> entries,
                                            const KnownSection &known,
                                            EventDigest digest) noexcept {
  if (known.section.digest == no_digest)
    return std::nullopt;
  SectionContent content;
  content.objects.reserve(entries.size());
  for_each_entry(entries, [&](const OrderedEntry &entry) {
    content.objects.push_back(renewed(entry, digest));
  });
  return digest.finish() == known.section.digest ? std::optional(std::move(content)) : std::nullopt;
}

/** Everything about a file whose sections were read. */
KnownPosts known_posts(const std::string &path, const FileIdentity &identity, PostsLayout layout,
                       std::vector<KnownSection> sections, const PlacedReader &file) noexcept {
  KnownPosts known{path, identity, std::move(layout), std::move(sections), {}};
  const KnownSection &last = known.sections.back();
  const std::uint64_t begin = last.offset + last.section.compressed_size;
  if (!file.read(begin, static_cast<std::uint64_t>(identity.size) - begin, known.end))
    known.identity = {};  // of no file
  return known;
}

}  // namespace

std::optional<SectionedPosts> read_sections(const PlacedReader &file,
                                            const std::string &path) noexcept {
  const std::optional<FileIdentity> identity = file.identity();
  std::optional<PostsLayout> layout =
      identity ? read_layout(file, static_cast<std::uint64_t>(identity->size)) : std::nullopt;
  if (!layout)
    return std::nullopt;
  std::vector<KnownSection> sections = place_sections(*layout);
  SectionedPosts posts;
  posts.contents.resize(sections.size());
  std::atomic<bool> in_order = !sections.empty();
  const auto read_one = [&](SectionReader &reader, std::size_t number) {
    KnownSection &known = sections[number];
    std::string compressed;
    if (!file.read(known.offset, known.section.compressed_size, compressed))
      return false;
    std::optional<SectionContent> content = reader.read(known.section, compressed);
    if (!content)
      return false;
    known.fingerprint = fingerprint_of(compressed);
    if (!complete(known, *content))
      in_order = false;
    posts.contents[number] = *std::move(content);
    return true;
  };
  if (!read_all(sections.size(), layout->seed, read_one))
    return std::nullopt;
  if (in_order && are_ordered(posts.contents))
    posts.known = known_posts(path, *identity, *std::move(layout), std::move(sections), file);
  return posts;
}

std::optional<std::vector<SectionContent>>
reread_sections(const PlacedReader &file, const KnownPosts &known,
                std::span<OrderedEntry> entries) noexcept {
  const auto ranges = entries_of_sections(entries, known.sections);
  std::vector<SectionContent> contents(known.sections.size());
  const auto reread_one = [&](SectionReader &reader, std::size_t number) {
    const KnownSection &section = known.sections[number];
    std::optional<SectionContent> content =
        take_postings(ranges[number], section, EventDigest(known.layout.seed));
    std::string compressed;
    if (!content && read_known(file, section, compressed))
      content = reader.read(section.section, compressed);
    if (!content)
      return false;
    contents[number] = *std::move(content);
    return true;
  };
  if (!read_all(contents.size(), known.layout.seed, reread_one))
    return std::nullopt;
  return contents;
}

}  // namespace velkor
