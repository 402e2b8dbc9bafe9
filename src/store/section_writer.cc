/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/section_writer.h"

#include <string_view>

#include "posting/event_record.h"
#include "store/event_text.h"
#include "store/section_reader.h"
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
  const std::optional<std::uint64_t> read = read_back();
  if (!read)
    return false;
  std::string_view text = document_;
  text.remove_prefix(document_begin.size());
  text.remove_suffix(document_end.size());
  made.compressed = deflater_.part(text, Deflater::Part::inner);
  made.known.section = {static_cast<std::uint32_t>(made.compressed.size()),
                        static_cast<std::uint32_t>(text.size()), checksum_of(text),
                        *read == written ? written : no_digest};
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

std::optional<std::uint64_t> SectionWriter::read_back() noexcept {
  const auto read = read_document(document_, parts_);
  if (!read || read->postings.size() != written_)
    return std::nullopt;
  for (const PackedEvent &event : read->postings)
    digest_.add(*event);
  const std::uint64_t digest = digest_.finish();
  return read->remarks.empty() ? digest : no_digest;
}

bool SectionWriter::is_readable_alone(const ZoxEvent &event) const noexcept {
  std::string document(document_begin);
  append_element(document, event);
  document.append(document_end);
  const auto read = read_document(document, parts_);
  return read && read->postings.size() == 1;
}

}  // namespace velkor
