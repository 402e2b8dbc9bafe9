/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_xml.h>

#include <variant>

#include <velkor/zox_string.h>

#include "posting/event_fields.h"
#include "store/event_text.h"
#include "support/assertion.h"
#include "support/owned.h"
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
    if (event_.*field.member != nullptr || is_always_written(field))
      xml::add_cdata(parent_, name, view_of(event_.*field.member));
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

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

xmlNodePtr zox_events_xml_add_basic(const ZoxEvent *event, xmlDocPtr) {
  ZOX_ASSERT(event);
  if (const char *fault = writing_fault(*event)) {
    warn_of_unwritable(event->postId, fault);
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
