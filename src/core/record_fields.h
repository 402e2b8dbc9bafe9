/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Tables of a record's elements: one row tells name and member, and the member's type the rest. */
#ifndef VELKOR_CORE_RECORD_FIELDS_H
#define VELKOR_CORE_RECORD_FIELDS_H

#include <span>
#include <string_view>
#include <variant>

#include <velkor/zox_types.h>

#include "support/xml.h"

namespace velkor {

/** One element of a record. A `GSList *` is a split list. */
template <typename Record>
struct Field {
  /** Name of the element. */
  std::string_view element;
  std::variant<gint32 Record::*, guint32 Record::*, gint64 Record::*, GString * Record::*,
               char * Record::*, GSList * Record::*>
      member;
  /** Name of the element when it is printed, where records of this kind are. */
  const char *printed = nullptr;
};

/**
 * Reads what `node` holds into a member, releasing an earlier value.
 * @return whether there was a value: false for a text element without text
 */
bool read_value(xmlDoc *doc, xmlNode *node, gint32 &place) noexcept;
bool read_value(xmlDoc *doc, xmlNode *node, guint32 &place) noexcept;
bool read_value(xmlDoc *doc, xmlNode *node, gint64 &place) noexcept;
bool read_value(xmlDoc *doc, xmlNode *node, GString *&place) noexcept;
bool read_value(xmlDoc *doc, xmlNode *node, char *&place) noexcept;
bool read_value(xmlDoc *doc, xmlNode *node, GSList *&place) noexcept;

/** Releases what a member holds and leaves it empty. */
void release_value(gint32 &place) noexcept;
void release_value(guint32 &place) noexcept;
void release_value(gint64 &place) noexcept;
void release_value(GString *&place) noexcept;
void release_value(char *&place) noexcept;
void release_value(GSList *&place) noexcept;

/** How an element is compared with a name: xml::is_named or xml::is_named_exactly. */
using NameTest = bool (*)(const xmlNode *node, std::string_view name) noexcept;

/** The row for an element, or null when the record has none of that name. */
template <typename Record>
const Field<Record> *field_for(const xmlNode *node, std::span<const Field<Record>> fields,
                               NameTest test = xml::is_named) noexcept {
  if (node->type != XML_ELEMENT_NODE)
    return nullptr;
  for (const Field<Record> &field : fields) {
    if (test(node, field.element))
      return &field;
  }
  return nullptr;
}

template <typename Record>
bool read_field(xmlDoc *doc, xmlNode *node, const Field<Record> &field, Record &record) noexcept {
  return std::visit([&](auto member) { return read_value(doc, node, record.*member); },
                    field.member);
}

/** Fills a record from sibling elements; a later one of the same name counts, others do not. */
template <typename Record>
void read_fields(xmlDoc *doc, xmlNode *first, std::span<const Field<Record>> fields, Record &record,
                 NameTest test = xml::is_named) noexcept {
  for (xmlNode *node : xml::Siblings(first)) {
    if (const Field<Record> *field = field_for(node, fields, test))
      read_field(doc, node, *field, record);
  }
}

/** Releases all that the members of the table hold. */
template <typename Record>
void release_fields(std::span<const Field<Record>> fields, Record &record) noexcept {
  for (const Field<Record> &field : fields)
    std::visit([&](auto member) { release_value(record.*member); }, field.member);
}

}  // namespace velkor

#endif
