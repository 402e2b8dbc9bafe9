/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reads sections of the cache file, one after the other; each thread has a reader of its own. */
#ifndef VELKOR_STORE_SECTION_READER_H
#define VELKOR_STORE_SECTION_READER_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "posting/packed_event.h"
#include "posting/shared_parts.h"
#include "store/deflate.h"
#include "store/event_digest.h"
#include "store/event_reader.h"
#include "store/known_posts.h"

namespace velkor {

struct DocumentContent {
  std::vector<PackedEvent> postings;
  std::vector<EventRemark> remarks;
};

/**
 * Reads a document that begins and ends as the cache file does; prints nothing.
 * @return nothing when no reader takes it
 */
std::optional<DocumentContent> read_document(std::string_view document,
                                             const std::shared_ptr<SharedParts> &parts) noexcept;

/** The postings of one section, as the event list takes them. */
struct SectionContent {
  std::vector<OwnedEventObject> objects;
  std::vector<EventRemark> remarks;
  /** The digest of the postings that were read. */
  std::uint64_t digest = no_digest;
  /** Whether the ids rise from posting to posting. */
  bool ordered = true;
};

class SectionReader {
public:
  explicit SectionReader(std::uint64_t seed) noexcept : digest_(seed) {}

  /** The content of a section's compressed bytes; nothing when anything about them is wrong. */
  std::optional<SectionContent> read(const PostsSection &section,
                                     const std::string &compressed) noexcept;

private:
  Inflater inflater_;
  EventDigest digest_;
  std::shared_ptr<SharedParts> parts_ = std::make_shared<SharedParts>();
  std::string text_;
};

}  // namespace velkor

#endif
