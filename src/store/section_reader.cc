/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/section_reader.h"

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

std::optional<DocumentContent> read_document(std::string_view document,
                                             const std::shared_ptr<SharedParts> &parts) noexcept {
  std::string_view elements = document;
  elements.remove_prefix(document_begin.size());
  elements.remove_suffix(document_end.size());
  // What the scanner takes a parser takes as well, and much slower.
  if (auto postings = scan_elements(elements, *parts))
    return DocumentContent{*std::move(postings), {}};
  EventReader reader(parts, EventReader::Diagnosis::silent);
  if (reader.read(document) != EventReader::Outcome::Read)
    return std::nullopt;
  return DocumentContent{std::move(reader.postings), std::move(reader.remarks)};
}

std::optional<SectionContent> SectionReader::read(const PostsSection &section,
                                                  const std::string &compressed) noexcept {
  text_.assign(document_begin);
  if (!inflater_.append(compressed, section.text_size, Deflater::Part::inner, text_))
    return std::nullopt;
  if (checksum_of(std::string_view(text_).substr(document_begin.size())) != section.checksum)
    return std::nullopt;
  text_.append(document_end);
  auto read = read_document(text_, parts_);
  if (!read)
    return std::nullopt;
  SectionContent content = content_of(std::move(read->postings), digest_);
  content.remarks = std::move(read->remarks);
  return content;
}

}  // namespace velkor
