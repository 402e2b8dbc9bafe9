/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/json.h"

#include "support/text.h"
#include "velkorctl/output.h"
#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

using OwnedNode = std::unique_ptr<JsonNode, ReleaseWith<json_node_unref>>;

/** Escapes the control characters that the generator leaves, since a terminal may act on them. */
std::string escape_controls(const char *text) {
  std::string result;
  for (const char *at = text; *at != '\0'; at = g_utf8_next_char(at)) {
    const gunichar character = g_utf8_get_char(at);
    if (is_unsafe(character))
      result += OwnedText(g_strdup_printf("\\u%04x", character)).get();
    else
      result.append(at, static_cast<std::size_t>(g_utf8_next_char(at) - at));
  }
  return result;
}

}  // namespace

Json::Json() : builder_(json_builder_new()) {}

void Json::name(const char *name) {
  if (name != nullptr)
    json_builder_set_member_name(builder_.get(), name);
}

Json &Json::begin_object(const char *member) {
  name(member);
  json_builder_begin_object(builder_.get());
  return *this;
}

Json &Json::begin_array(const char *member) {
  name(member);
  json_builder_begin_array(builder_.get());
  return *this;
}

Json &Json::end_object() {
  json_builder_end_object(builder_.get());
  return *this;
}

Json &Json::end_array() {
  json_builder_end_array(builder_.get());
  return *this;
}

Json &Json::text(const char *member, std::string_view value) {
  name(member);
  return item(value);
}

Json &Json::text(const char *member, const GString *value) {
  return value == nullptr ? null(member) : text(member, std::string_view(value->str, value->len));
}

Json &Json::number(const char *member, std::int64_t value) {
  name(member);
  return item(value);
}

Json &Json::flag(const char *member, bool value) {
  name(member);
  json_builder_add_boolean_value(builder_.get(), value ? TRUE : FALSE);
  return *this;
}

Json &Json::null(const char *member) {
  name(member);
  json_builder_add_null_value(builder_.get());
  return *this;
}

Json &Json::item(std::string_view value) {
  json_builder_add_string_value(builder_.get(), valid_utf8(value).get());
  return *this;
}

Json &Json::item(std::int64_t value) {
  json_builder_add_int_value(builder_.get(), value);
  return *this;
}

std::string Json::compact() const {
  const OwnedNode root(json_builder_get_root(builder_.get()));
  return escape_controls(OwnedText(json_to_string(root.get(), FALSE)).get());
}

void JsonLines::add(const Json &value) {
  output_.write(empty_ ? "[\n" : ",\n");
  output_.write(value.compact());
  empty_ = false;
}

void JsonLines::finish() {
  output_.write(empty_ ? "[]\n" : "\n]\n");
}

}  // namespace velkor::ctl
