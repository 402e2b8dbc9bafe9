/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/json.h"

#include "support/text.h"

namespace velkor {
namespace {

/** Escapes the control characters that the generator leaves as they are. */
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

Json &Json::begin_member(const char *name) {
  if (name != nullptr)
    json_builder_set_member_name(builder_.get(), name);
  return *this;
}

Json &Json::begin_object(const char *member) {
  begin_member(member);
  json_builder_begin_object(builder_.get());
  return *this;
}

Json &Json::begin_array(const char *member) {
  begin_member(member);
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

Json &Json::value(std::string_view text) {
  json_builder_add_string_value(builder_.get(), valid_utf8(text).get());
  return *this;
}

Json &Json::value(const GString *text) {
  return text == nullptr ? null() : value(view_of(text));
}

Json &Json::value(bool flag) {
  json_builder_add_boolean_value(builder_.get(), flag ? TRUE : FALSE);
  return *this;
}

Json &Json::null() {
  json_builder_add_null_value(builder_.get());
  return *this;
}

Json &Json::integer(std::int64_t number) {
  json_builder_add_int_value(builder_.get(), number);
  return *this;
}

OwnedText Json::text(bool pretty) const {
  const std::unique_ptr<JsonNode, ReleaseWith<json_node_unref>> root(
      json_builder_get_root(builder_.get()));
  return OwnedText(json_to_string(root.get(), pretty ? TRUE : FALSE));
}

std::string Json::compact() const {
  return escape_controls(text(false).get());
}

std::string Json::pretty() const {
  return std::string(text(true).get()) + "\n";
}

}  // namespace velkor
