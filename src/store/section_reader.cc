/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/section_reader.h"

#include <string_view>
#include <utility>

#include "store/section_scanner.h"

namespace velkor {
namespace {

/** Makes the objects in which the list holds the postings that were read. */
SectionContent content_of(std::vector<PackedEvent> postings, EventDigest &digest) noexcept {
  SectionContent content;
  content.objects.reserve(postings.size());
  gint64 last_id = G_MININT64;
  for (PackedEvent &event : postings) {
    content.ordered = content.ordered && event->postId > last_id;
    last_id = event->postId;
    digest.add(*event);
    content.objects.push_back(new_object(std::move(event)));
  }
  content.digest = digest.finish();
  return content;
}

}  // namespace

std::optional<SectionContent> SectionReader::read(const PostsSection &section,
                                                  const std::string &compressed) noexcept {
  text_.assign(document_begin);
  if (!inflater_.append(compressed, section.text_size, Deflater::Part::inner, text_))
    return std::nullopt;
  const std::string_view elements = std::string_view(text_).substr(document_begin.size());
  if (checksum_of(elements) != section.checksum)
    return std::nullopt;
  if (auto postings = scan_elements(elements, *parts_))
    return content_of(*std::move(postings), digest_);
  text_.append(document_end);
  EventReader reader(parts_, EventReader::Diagnosis::silent);
  if (reader.read(text_) != EventReader::Outcome::Read)
    return std::nullopt;
  SectionContent content = content_of(std::move(reader.postings), digest_);
  content.remarks = std::move(reader.remarks);
  return content;
}

}  // namespace velkor
