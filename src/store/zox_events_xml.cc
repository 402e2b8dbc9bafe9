/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_xml.h>

#include <algorithm>
#include <string_view>
#include <variant>

#include <libxml/parserInternals.h>

#include <velkor/zox_string.h>

#include "posting/event_fields.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

/** Adds the element of one field; a text or list that is null is left out. */
class FieldWriter {
public:
  FieldWriter(const ZoxEvent &event, xmlNode *parent) noexcept : event_(event), parent_(parent) {}

  void write(const EventField &field) const noexcept {
    std::visit([&](auto kind) { this->add(field.element, kind); }, field.kind);
  }

private:
  void add(const char *name, NumberField field) const noexcept {
    add_number(name, event_.*field.member);
  }

  void add(const char *name, TimeField field) const noexcept {
    add_number(name, static_cast<gint32>(event_.*field.member));
  }

  void add(const char *name, TextField field) const noexcept {
    if (const GString *text = event_.*field.member)
      xml::add_cdata(parent_, name, view_of(text));
  }

  void add(const char *name, ListField field) const noexcept {
    if (GSList *list = event_.*field.member)
      xml::add_cdata(parent_, name, view_of(OwnedString(zox_splitted_list_concat(list)).get()));
  }

  void add(const char *, TracksField) const noexcept {}  // never cached

  void add_number(const char *name, gint32 number) const noexcept {
    xml::add_text(parent_, name, OwnedString(zox_string_integer(number))->str);
  }

  const ZoxEvent &event_;
  xmlNode *parent_;
};

/** Whether a reader will take the text back; one that it refuses would cost the whole document. */
bool is_readable(const GString *text) noexcept {
  return text == nullptr || (text->len <= XML_MAX_TEXT_LENGTH && xml::is_storable(view_of(text)));
}

bool is_readable(const ZoxEvent &event, const EventField &field) noexcept {
  if (const auto *text = std::get_if<TextField>(&field.kind))
    return is_readable(event.*(text->member));
  if (const auto *list = std::get_if<ListField>(&field.kind))
    return std::ranges::all_of(Items<const GString>(event.*(list->member)),
                               [](const GString *item) { return is_readable(item); });
  return true;
}

/** Why the posting cannot be written; null when it can. */
const char *fault_of(const ZoxEvent &event) noexcept {
  if (event.poster == nullptr)
    return "geen poster";
  for (const EventField &field : basic_fields) {
    if (!is_readable(event, field))
      return field.element;
  }
  return nullptr;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

xmlNodePtr zox_events_xml_add_basic(const ZoxEvent *event, xmlDocPtr) {
  ZOX_ASSERT(event);
  if (const char *fault = fault_of(*event)) {
    g_warning("zox_events_xml_add_basic(): posting %i kan niet geschreven worden: %s\n",
              event->postId, fault);
    return nullptr;
  }
  xmlNode *element = xmlNewNode(nullptr, xml::chars(event_element));
  xmlNewProp(element, xml::chars("Code"), xml::chars("1"));
  const FieldWriter writer(*event, element);
  for (const EventField &field : basic_fields)
    writer.write(field);
  return element;
}

xmlNodePtr zox_events_xml_add_all(const ZoxEvent *event, xmlDocPtr doc) {
  ZOX_ASSERT(event);
  ZOX_ASSERT(doc);
  return zox_events_xml_add_basic(event, doc);
}

}  // extern "C"
