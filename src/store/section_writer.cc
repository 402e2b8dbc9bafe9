/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/section_writer.h"

#include <optional>
#include <utility>

#include "posting/event_record.h"
#include "store/event_text.h"
#include "store/section_scanner.h"
#include "support/rw_lock.h"

namespace velkor {

NewSection SectionWriter::write(std::span<const OrderedEntry> entries) noexcept {
  NewSection made;
  if (try_to_write(entries, Care::usual, made))
    return made;
  // Some posting spoils the section for the others: each has to show that it can be read.
  made = {};
  try_to_write(entries, Care::each_alone, made);
  return made;
}

bool SectionWriter::try_to_write(std::span<const OrderedEntry> entries, Care care,
                                 NewSection &made) noexcept {
  document_.assign(document_begin);
  written_ = 0;
  for (const OrderedEntry &entry : entries)
    add(entry, care, made);
  const std::uint64_t written = digest_.finish();
  if (written_ == 0)
    return true;
  document_.append(document_end);
  std::string_view text = document_;
  text.remove_prefix(document_begin.size());
  text.remove_suffix(document_end.size());
  std::uint64_t read = no_digest;
  if (!read_back(text, read))
    return false;
  made.compressed = deflater_.part(text, Deflater::Part::inner);
  made.known.section = {static_cast<std::uint32_t>(made.compressed.size()),
                        static_cast<std::uint32_t>(text.size()), checksum_of(text),
                        read == written ? written : no_digest};
  made.known.fingerprint = fingerprint_of(made.compressed);
  return true;
}

void SectionWriter::add(const OrderedEntry &entry, Care care, NewSection &made) noexcept {
  const ReadLock lock(entry.object->lock);
  const ZoxEvent &event = *entry.object->event;
  if (is_long_deleted(event, now_))
    return;
  const char *fault = writing_fault(event);
  if (fault == nullptr && care == Care::each_alone && !is_readable_alone(event))
    fault = "onleesbaar";
  if (fault != nullptr) {
    made.refusals.push_back({event.postId, fault});
    return;
  }
  if (written_++ == 0)
    made.known.first_id = entry.id;
  append_element(document_, event);
  digest_.add(event);
}

bool SectionWriter::read_back(std::string_view elements, std::uint64_t &digest) noexcept {
  // What the scanner takes a parser takes as well, and much slower.
  std::optional<std::vector<PackedEvent>> events = scan_elements(elements, *parts_);
  bool odd = false;
  if (!events) {
    EventReader reader(parts_, EventReader::Diagnosis::silent);
    if (reader.read(document_) != EventReader::Outcome::Read)
      return false;
    odd = !reader.remarks.empty();
    events = std::move(reader.postings);
  }
  for (const PackedEvent &event : *events)
    digest_.add(*event);
  digest = digest_.finish();
  if (odd)
    digest = no_digest;
  return events->size() == written_;
}

bool SectionWriter::is_readable_alone(const ZoxEvent &event) const noexcept {
  std::string document(document_begin);
  append_element(document, event);
  document.append(document_end);
  EventReader reader(parts_, EventReader::Diagnosis::silent);
  return reader.read(document) == EventReader::Outcome::Read && reader.postings.size() == 1;
}

}  // namespace velkor
