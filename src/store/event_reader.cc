/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/event_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <variant>

#include <libxml/parserInternals.h>

#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

/** libxml2 tolerates this much expansion of entities in a tree; a stream has to see to it itself.
 */
constexpr std::size_t allowed_growth = 10;
constexpr std::size_t always_allowed = XML_MAX_TEXT_LENGTH;

/* How many elements are open within an element of each kind. */
constexpr int root_depth = 1;
constexpr int posting_depth = 2;
constexpr int field_depth = 3;
constexpr int track_depth = 4;

}  // namespace

struct EventReader::Callbacks {
  static EventReader &reader(xmlParserCtxt *parser) noexcept {
    return *static_cast<EventReader *>(parser->_private);
  }

  static void start_element(void *context, const xmlChar *name, const xmlChar *prefix,
                            const xmlChar *address, int, const xmlChar **, int, int,
                            const xmlChar **) {
    auto *parser = static_cast<xmlParserCtxt *>(context);
    // A prefix that stands for nothing is part of the name, which is then none that counts.
    const bool foreign = prefix != nullptr && address == nullptr;
    reader(parser).start_element(parser, foreign ? nullptr : name);
  }

  static void end_element(void *context, const xmlChar *, const xmlChar *, const xmlChar *) {
    auto *parser = static_cast<xmlParserCtxt *>(context);
    reader(parser).end_element(parser);
  }

  static void characters(void *context, const xmlChar *text, int length) {
    auto *parser = static_cast<xmlParserCtxt *>(context);
    reader(parser).characters(parser, {xml::chars(text), static_cast<std::size_t>(length)});
  }

  static void comment(void *context, const xmlChar *) {
    reader(static_cast<xmlParserCtxt *>(context)).other_node();
  }

  static void instruction(void *context, const xmlChar *, const xmlChar *) {
    reader(static_cast<xmlParserCtxt *>(context)).other_node();
  }

  static xmlSAXHandler handler() noexcept {
    xmlSAXHandler handler = xml::closed_handler();
    handler.startElementNs = start_element;
    handler.endElementNs = end_element;
    handler.characters = characters;
    handler.ignorableWhitespace = characters;
    handler.cdataBlock = characters;
    handler.comment = comment;
    handler.processingInstruction = instruction;
    handler.reference = nullptr;
    return handler;
  }
};

EventReader::Outcome EventReader::read(std::string_view document) noexcept {
  if (document.empty())
    return Outcome::NotWellFormed;
  xmlSAXHandler handler = Callbacks::handler();
  xml::Source source(document, diagnosis_);
  const xml::Parser parser = source.make_parser(handler);
  if (!parser)
    return Outcome::NotWellFormed;
  if (diagnosis_ == Diagnosis::silent)
    xmlCtxtUseOptions(parser.get(), xml::parse_options | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  parser->_private = this;
  bytes_allowed_ = std::max(always_allowed, allowed_growth * document.size());
  note_names(parser->dict);
  const bool usable = xmlParseDocument(parser.get()) == 0 && parser->wellFormed != 0 && !refused_ &&
                      !source.held_back();
  const xml::Document declarations(std::exchange(parser->myDoc, nullptr));
  if (!usable)
    return Outcome::NotWellFormed;
  if (!root_matches_)
    return Outcome::WrongRoot;
  return root_has_children_ ? Outcome::Read : Outcome::NoChildren;
}

void EventReader::note_names(xmlDict *dictionary) noexcept {
  const auto held = [dictionary](const char *name) {
    return xmlDictLookup(dictionary, xml::chars(name), -1);
  };
  std::ranges::transform(event_fields, field_names_.begin(), held, &EventField::element);
  event_name_ = held(event_element);
  track_name_ = held(track_element);
}

bool EventReader::is_event(const xmlChar *name) const noexcept {
  return name == event_name_ ||
         (name != nullptr && equal_ignoring_case(xml::chars(name), event_element));
}

void EventReader::start_element(xmlParserCtxt *parser, const xmlChar *name) noexcept {
  if (!within_bounds(parser, name == nullptr ? 0 : std::strlen(xml::chars(name))))
    return;
  switch (++depth_) {
  case root_depth:
    root_matches_ = name != nullptr && equal_ignoring_case(xml::chars(name), root_element);
    break;
  case posting_depth:
    root_has_children_ = true;
    in_posting_ = root_matches_ && is_event(name);
    if (in_posting_)
      draft_.start();
    break;
  case field_depth:
    if (in_posting_)
      start_field(name);
    break;
  case track_depth:
    in_track_ = field_ != nullptr && std::holds_alternative<TracksField>(field_->kind) &&
                name == track_name_;
    if (in_track_)
      draft_.open_track();
    break;
  default:
    break;
  }
}

void EventReader::start_field(const xmlChar *name) noexcept {
  const auto *found = std::ranges::find(field_names_, name);
  if (found == field_names_.end())
    return;
  field_ = &event_fields[static_cast<std::size_t>(found - field_names_.begin())];
  draft_.open(*field_);
}

void EventReader::end_element(xmlParserCtxt *parser) noexcept {
  switch (depth_--) {
  case posting_depth:
    if (std::exchange(in_posting_, false))
      end_posting(parser);
    break;
  case field_depth:
    if (const EventField *field = std::exchange(field_, nullptr))
      end_field(*field);
    break;
  case track_depth:
    if (std::exchange(in_track_, false))
      draft_.close_track();
    break;
  default:
    break;
  }
}

void EventReader::end_posting(xmlParserCtxt *parser) noexcept {
  if (job_ != nullptr && job_->cancelled()) {
    refused_ = true;
    xmlStopParser(parser);
    return;
  }
  if (postings.size() < most_postings_)
    postings.push_back(draft_.finish());
  else
    refuse(parser, "Document of too many postings\n");
}

void EventReader::end_field(const EventField &field) noexcept {
  if (const auto oddity = draft_.close())
    remarks.push_back({postings.size(), std::get<ListField>(field.kind).name, *oddity});
}

void EventReader::characters(xmlParserCtxt *parser, std::string_view text) noexcept {
  if (!within_bounds(parser, text.size()))
    return;
  if (depth_ == field_depth && field_ != nullptr)
    draft_.append(text);
  else if (depth_ == track_depth && in_track_)
    draft_.append_track(text);
  else
    other_node();
}

void EventReader::other_node() noexcept {
  if (depth_ == root_depth)
    root_has_children_ = true;
}

bool EventReader::within_bounds(xmlParserCtxt *parser, std::size_t bytes) noexcept {
  if (bytes <= bytes_allowed_) [[likely]] {
    bytes_allowed_ -= bytes;
    return true;
  }
  refuse(parser, "Detected an entity reference loop\n");
  bytes_allowed_ = 0;
  return false;
}

void EventReader::refuse(xmlParserCtxt *parser, const char *reason) noexcept {
  if (!refused_ && diagnosis_ == Diagnosis::told)
    xmlGenericError(xmlGenericErrorContext, "%s", reason);
  refused_ = true;
  xmlStopParser(parser);
}

}  // namespace velkor
