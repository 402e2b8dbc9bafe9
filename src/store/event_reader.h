/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Reads a document of postings as a stream: no copy of the text is made and no tree built, and
 * each posting is packed as soon as its element ends. What was read is only good once the whole
 * document has turned out to be.
 */
#ifndef VELKOR_STORE_EVENT_READER_H
#define VELKOR_STORE_EVENT_READER_H

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <libxml/parser.h>

#include "core/job.h"
#include "posting/event_fields.h"
#include "posting/packed_event.h"
#include "store/event_draft.h"
#include "support/xml.h"

namespace velkor {

/** Something odd about one posting, reported when the posting is accepted into the list. */
struct EventRemark {
  std::size_t posting;  // its number in the document, from 0
  const char *list;     // the list that it is about
  ListOddity oddity;
};

class EventReader {
public:
  enum class Outcome { NotWellFormed, WrongRoot, NoChildren, Read };

  /** Whether libxml2's error handlers are told what is wrong with a document. */
  using Diagnosis = xml::Source::Diagnosis;

  /** @param parts  where postings share what they have in common; readers in turn may use it */
  explicit EventReader(std::shared_ptr<SharedParts> parts = std::make_shared<SharedParts>(),
                       Diagnosis diagnosis = Diagnosis::told) noexcept
      : diagnosis_(diagnosis), parts_(std::move(parts)) {}
  EventReader(const EventReader &) = delete;
  EventReader &operator=(const EventReader &) = delete;

  /** Refuses a document of more postings than that. */
  void limit_postings(std::size_t most) noexcept { most_postings_ = most; }

  /** Gives a document up when the job of this thread is cancelled. */
  void stop_with_job() noexcept { job_ = current_job(); }

  /** Reads a whole document, once. */
  Outcome read(std::string_view document) noexcept;

  /** The postings and what was odd about them, both in the order of the document. */
  std::vector<PackedEvent> postings;
  std::vector<EventRemark> remarks;

private:
  /** The callbacks, which libxml2 calls with the parser as their context. */
  struct Callbacks;

  void note_names(xmlDict *dictionary) noexcept;
  void start_element(xmlParserCtxt *parser, const xmlChar *name) noexcept;
  void end_element(xmlParserCtxt *parser) noexcept;
  void end_posting(xmlParserCtxt *parser) noexcept;
  void characters(xmlParserCtxt *parser, std::string_view text) noexcept;
  void other_node() noexcept;

  void start_field(const xmlChar *name) noexcept;
  void end_field(const EventField &field) noexcept;
  [[nodiscard]] bool is_event(const xmlChar *name) const noexcept;
  /** Counts what the parser delivers; false when entities have made far too much of it. */
  bool within_bounds(xmlParserCtxt *parser, std::size_t bytes) noexcept;
  /** Ends the reading of a document that is not to be used. */
  void refuse(xmlParserCtxt *parser, const char *reason) noexcept;

  const Diagnosis diagnosis_;
  std::size_t most_postings_ = std::numeric_limits<std::size_t>::max();
  std::size_t bytes_allowed_ = 0;
  const Job *job_ = nullptr;
  /* The names as the parser's dictionary holds them, so that addresses can be compared. */
  std::array<const xmlChar *, event_fields.size()> field_names_{};
  const xmlChar *event_name_ = nullptr;
  const xmlChar *track_name_ = nullptr;

  int depth_ = 0;  // open elements
  bool root_matches_ = false;
  bool root_has_children_ = false;
  bool refused_ = false;
  bool in_posting_ = false;            // the open element below the root is a posting
  const EventField *field_ = nullptr;  // the open element below the posting, if it is known
  bool in_track_ = false;
  std::shared_ptr<SharedParts> parts_;
  EventDraft draft_{*parts_};
};

}  // namespace velkor

#endif
