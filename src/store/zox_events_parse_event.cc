/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading one posting from a tree. */
#include <velkor/zox_events_parse.h>

#include <algorithm>
#include <utility>
#include <variant>

#include <velkor/zox_xml_parse.h>

#include "core/app_core.h"
#include "posting/event_fields.h"
#include "posting/event_record.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/xml.h"

namespace velkor {
namespace {

const EventField *find_field(const xmlNode *node) noexcept {
  if (node->type != XML_ELEMENT_NODE)
    return nullptr;
  const auto *found = std::ranges::find(event_fields, xml::name_of(node), &EventField::element);
  return found == event_fields.end() ? nullptr : found;
}

/** Reads one element into the member that it fills; false when that makes the posting unusable. */
class ElementReader {
public:
  ElementReader(ZoxEvent &event, xmlDoc *document, xmlNode *node) noexcept
      : event_(event), document_(document), node_(node) {}

  bool operator()(NumberField field) const noexcept {
    event_.*field.member = zox_xml_parse_int(document_, node_);
    return true;
  }

  bool operator()(TimeField field) const noexcept {
    event_.*field.member = zox_xml_parse_int(document_, node_);
    return true;
  }

  bool operator()(TextField field) const noexcept {
    replace_string(event_.*field.member, zox_xml_parse_string(document_, node_));
    return true;
  }

  bool operator()(ListField field) const noexcept {
    const OwnedString tmp(zox_xml_parse_string(document_, node_));
    if (!tmp && tolerant())
      return false;
    ZOX_ASSERT_IN(zox_events_parse_event, tmp, "tmp");
    GSList *&list = event_.*field.member;
    if (list != nullptr)
      g_warning("WARNING! event->%s was already filled!", field.name);
    zox_splitted_list_free(&list);
    list = zox_splitted_list_split(tmp->str);
    return true;
  }

  bool operator()(TracksField field) const noexcept {
    zox_splitted_list_free(&(event_.*field.member));
    event_.*field.member = zox_events_parse_mp3_tracks(document_, node_->children);
    return true;
  }

private:
  ZoxEvent &event_;
  xmlDoc *document_;
  xmlNode *node_;
};

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxEvent *zox_events_parse_event(xmlDocPtr doc, xmlNodePtr firstChild) {
  OwnedEvent event(zox_event_new());
  for (xmlNode *node : xml::Siblings(firstChild)) {
    const EventField *field = find_field(node);
    if (field != nullptr && !std::visit(ElementReader(*event, doc, node), field->kind)) {
      g_warning("zox_events_parse_event(): posting %i: no text in %s, passed over\n", event->postId,
                field->element);
      return nullptr;
    }
  }
  derive_sub_category(*event);
  return event.release();
}

GSList *zox_events_parse_mp3_tracks(xmlDocPtr doc, xmlNodePtr firstChild) {
  ListBuilder<GString, free_string> tracks;
  for (xmlNode *node : xml::Siblings(firstChild)) {
    if (node->type != XML_ELEMENT_NODE || xml::name_of(node) != track_element)
      continue;
    if (GString *track = zox_xml_parse_string(doc, node))
      tracks.append(track);
  }
  return tracks.release();
}

}  // extern "C"
