/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/schema.h"

#include <utility>

#include "velkorctl/messages.h"
#include "velkorctl/record_printer.h"

namespace velkor::ctl {
namespace {

enum class Presence { always, or_null };

void add_kind(Json &json, const char *kind, Presence presence) {
  if (presence == Presence::always)
    json.member("type", kind);
  else
    json.begin_array("type").value(kind).value("null").end_array();
}

void add_type(Json &json, const char *member, const Type &type, Presence presence);

void add_members(Json &json, const Type &type) {
  json.begin_object("properties");
  for (const auto &[name, part] : type.parts)
    add_type(json, name.c_str(), part, Presence::or_null);
  json.end_object();
}

void add_alternatives(Json &json, const Type &type) {
  json.begin_array("anyOf");
  for (const auto &[name, part] : type.parts)
    add_type(json, nullptr, part, Presence::or_null);
  json.end_array();
}

/** A schema as a member, or without a name in an array. */
void add_type(Json &json, const char *member, const Type &type, Presence presence) {
  json.begin_object(member);
  switch (type.kind) {
  case Type::Kind::text:
    add_kind(json, "string", presence);
    break;
  case Type::Kind::number:
    add_kind(json, "integer", presence);
    break;
  case Type::Kind::flag:
    add_kind(json, "boolean", presence);
    break;
  case Type::Kind::moment:
    add_kind(json, "string", presence);
    json.member("format", "date-time");
    break;
  case Type::Kind::list:
    add_kind(json, "array", presence);
    add_type(json, "items", type.parts.front().second, Presence::always);
    break;
  case Type::Kind::object:
    add_kind(json, "object", presence);
    add_members(json, type);
    break;
  case Type::Kind::any:
    add_alternatives(json, type);
    break;
  }
  json.end_object();
}

Type type_of(const std::vector<FieldInfo> &fields) {
  Type record = type::object({});
  for (const FieldInfo &field : fields)
    record.parts.emplace_back(field.name, field.type);
  return record;
}

Json begin_schema(const std::string &title) {
  Json json;
  json.begin_object().member("$schema", "https://json-schema.org/draft/2020-12/schema");
  json.member("title", title);
  return json;
}

void add_constant(Json &json, const char *member, const auto &value) {
  json.begin_object(member).member("const", value).end_object();
}

void require(Json &json, const std::vector<std::string> &names) {
  json.begin_array("required");
  for (const std::string &name : names)
    json.value(name);
  json.end_array();
}

/** What every object that stands for itself begins with. */
void add_head(Json &json, const std::string &name) {
  json.begin_object("properties");
  add_constant(json, "schema", "velkorctl." + name);
  add_constant(json, "version", format_version);
}

void add_records(Json &json, const RecordInfo &record) {
  if (record.shape == RecordInfo::Shape::one) {
    json.begin_object("item").member("$ref", "#/$defs/record").end_object();
    return;
  }
  json.begin_object("items").member("type", "array").begin_object("items");
  json.member("$ref", "#/$defs/record").end_object().end_object();
}

void add_document(Json &json, const std::string &name, const RecordInfo &record) {
  std::vector<std::string> names{"schema", "version", "code", "message"};
  add_kind(json, "object", Presence::always);
  add_head(json, name);
  add_type(json, "code", type::number(), Presence::always);
  add_type(json, "message", type::text(), Presence::always);
  for (const FieldInfo &fact : record.facts) {
    add_type(json, fact.name.c_str(), fact.type, Presence::or_null);
    names.push_back(fact.name);
  }
  add_records(json, record);
  json.end_object();
  names.emplace_back(record.shape == RecordInfo::Shape::one ? "item" : "items");
  require(json, names);
}

std::string schema_of_command(const std::string &name, const RecordInfo &record) {
  std::string words = name;
  if (const std::size_t dot = words.find('.'); dot != std::string::npos)
    words[dot] = ' ';
  Json json = begin_schema("velkorctl " + words + " --format json");
  add_document(json, name, record);
  json.begin_object("$defs");
  add_type(json, "record", type_of(record.fields), Presence::always);
  return json.end_object().end_object().pretty();
}

std::string schema_of_message(const MessageKind &kind) {
  Json json = begin_schema("velkorctl, a line on standard error: " + kind.name);
  add_kind(json, "object", Presence::always);
  add_head(json, kind.name);
  std::vector<std::string> names{"schema", "version"};
  for (const FieldInfo &field : kind.fields) {
    add_type(json, field.name.c_str(), field.type, Presence::or_null);
    names.push_back(field.name);
  }
  json.end_object();
  require(json, names);
  return json.end_object().pretty();
}

std::string file_name(const std::string &name) {
  return "velkorctl." + name + ".schema.json";
}

}  // namespace

std::map<std::string, std::string> all_schemas(const std::vector<CommandGroup> &groups) {
  std::map<std::string, std::string> schemas;
  for (const CommandGroup &group : groups)
    for (const Command &command : group.commands) {
      const std::string name = (group.name.empty() ? "" : group.name + ".") + command.name;
      if (command.record)
        schemas[file_name(name)] = schema_of_command(name, *command.record);
    }
  for (const MessageKind &kind : message_kinds())
    schemas[file_name(kind.name)] = schema_of_message(kind);
  return schemas;
}

}  // namespace velkor::ctl
