/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Records: what a command prints about one thing. One table of fields per kind of thing serves
 * every format, the choice and the order of the fields, completion and the JSON schema.
 */
#ifndef VELKORCTL_RECORD_H
#define VELKORCTL_RECORD_H

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "velkorctl/look.h"
#include "velkorctl/value.h"

namespace velkor::ctl {

/** The version of all JSON that is printed; fields are only ever added within one. */
constexpr int format_version = 1;

/** What the values of a field can be, besides nothing. */
struct Type {
  enum class Kind { text, number, flag, moment, list, object, any } kind;
  /** The members of an object; the one nameless item of a list. */
  std::vector<std::pair<std::string, Type>> parts = {};
};

namespace type {
inline Type text() {
  return {Type::Kind::text};
}
inline Type number() {
  return {Type::Kind::number};
}
inline Type flag() {
  return {Type::Kind::flag};
}
inline Type moment() {
  return {Type::Kind::moment};
}
inline Type list_of(Type item) {
  return {Type::Kind::list, {{"", std::move(item)}}};
}
inline Type object(std::vector<std::pair<std::string, Type>> members) {
  return {Type::Kind::object, std::move(members)};
}
/** A text or a list of texts. */
inline Type texts() {
  return {Type::Kind::any, {{"", text()}, {"", list_of(text())}}};
}
}  // namespace type

/** Where the text about one record shows a field. */
enum class Place {
  /** In a line with its title, unless it is empty. */
  line,
  /** As line, but not when the number is 0. */
  line_unless_zero,
  /** Below the lines, under its title, with its own line breaks. */
  below,
  nowhere,
};

/** All of a field but how to get at its value. */
struct FieldInfo {
  /** The same for the same thing in every command, as in "subCategory". */
  std::string name;
  Type type;
  /**
   * The place in the queue for a narrow table: 1 is never left out, the highest is left out first.
   * A field with 0 is only in the tables that it is named for.
   */
  int rank = 0;
  /** The column is cut when the table is too wide. */
  bool flexible = false;
  Place place = Place::line;
  Style style = Style::plain;
  /** Words in place of those of the name, as in "File name". */
  std::string title = {};
};

template <typename Item>
struct Field {
  using Getter = std::function<Value(const Item &)>;
  using Linker = std::function<std::string(const Item &)>;

  Field(FieldInfo about, Getter get, Linker link_to = nullptr)
      : info(std::move(about)), value(std::move(get)), link(std::move(link_to)) {}

  FieldInfo info;
  Getter value;
  /** The web address that the value is a link to; empty for none. */
  Linker link;
};

template <typename Item>
using Fields = std::vector<Field<Item>>;

/** What a command prints: one record or a list of them. */
struct RecordInfo {
  enum class Shape {
    one,
    list,
    /** One after the other, as they happen. */
    events,
  } shape = Shape::list;
  std::vector<FieldInfo> fields;
  /** What is counted: "posting", "postings". */
  std::string noun = {};
  std::string plural = {};
  /** What the JSON document tells about the list as a whole. */
  std::vector<FieldInfo> facts = {};
};

/** "File name" for "fileName"; "ID" for "id". */
std::string title_of(const FieldInfo &field);

template <typename Item>
std::vector<FieldInfo> infos_of(const Fields<Item> &fields) {
  std::vector<FieldInfo> infos;
  infos.reserve(fields.size());
  for (const Field<Item> &field : fields)
    infos.push_back(field.info);
  return infos;
}

template <typename Item>
RecordInfo one_record(const Fields<Item> &fields) {
  return {RecordInfo::Shape::one, infos_of(fields)};
}

template <typename Item>
RecordInfo events_of(const Fields<Item> &fields) {
  return {RecordInfo::Shape::events, infos_of(fields)};
}

template <typename Item>
RecordInfo list_of_records(const Fields<Item> &fields, std::string noun, std::string plural) {
  return {RecordInfo::Shape::list, infos_of(fields), std::move(noun), std::move(plural)};
}

/** The fields of what `part` finds in an item; all are nothing when it finds null. */
template <typename Item, typename Part>
Fields<Item> fields_of_part(const Fields<Part> &fields,
                            std::function<const Part *(const Item &)> part) {
  Fields<Item> result;
  result.reserve(fields.size());
  for (const Field<Part> &field : fields) {
    Field<Item> outer{field.info, [part, value = field.value](const Item &item) {
                        const Part *found = part(item);
                        return found == nullptr ? Value() : value(*found);
                      }};
    if (field.link)
      outer.link = [part, link = field.link](const Item &item) {
        const Part *found = part(item);
        return found == nullptr ? std::string() : link(*found);
      };
    result.push_back(std::move(outer));
  }
  return result;
}

/** A record within another one: an object, and its type. */
template <typename Item>
Value object_value(const Fields<Item> &fields, const Item &item, std::string text) {
  Value::Object object{std::move(text), {}};
  for (const Field<Item> &field : fields)
    object.members.emplace_back(field.info.name, field.value(item));
  return object;
}
template <typename Item>
Type object_type(const Fields<Item> &fields) {
  Type result = type::object({});
  for (const Field<Item> &field : fields)
    result.parts.emplace_back(field.info.name, field.info.type);
  return result;
}

/** Fields of several tables, one after the other. */
template <typename Item>
Fields<Item> together(Fields<Item> fields, const Fields<Item> &more) {
  fields.insert(fields.end(), more.begin(), more.end());
  return fields;
}

}  // namespace velkor::ctl

#endif
