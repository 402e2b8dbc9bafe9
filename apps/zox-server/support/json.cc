/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/support/json.h"

#include "support/text.h"

namespace velkor::server {

JsonWriter &JsonWriter::begin_object() {
  json_builder_begin_object(builder_.get());
  return *this;
}

JsonWriter &JsonWriter::end_object() {
  json_builder_end_object(builder_.get());
  return *this;
}

JsonWriter &JsonWriter::begin_array() {
  json_builder_begin_array(builder_.get());
  return *this;
}

JsonWriter &JsonWriter::end_array() {
  json_builder_end_array(builder_.get());
  return *this;
}

JsonWriter &JsonWriter::name(const char *name) {
  json_builder_set_member_name(builder_.get(), name);
  return *this;
}

JsonWriter &JsonWriter::value(std::string_view text) {
  json_builder_add_string_value(builder_.get(), valid_utf8(text).get());
  return *this;
}

JsonWriter &JsonWriter::value(bool truth) {
  json_builder_add_boolean_value(builder_.get(), truth ? TRUE : FALSE);
  return *this;
}

JsonWriter &JsonWriter::integer(std::int64_t number) {
  json_builder_add_int_value(builder_.get(), number);
  return *this;
}

std::string JsonWriter::finish() {
  const std::unique_ptr<JsonNode, ReleaseWith<json_node_unref>> root(
      json_builder_get_root(builder_.get()));
  const OwnedText text(json_to_string(root.get(), TRUE));
  return std::string(text.get()) + "\n";
}

}  // namespace velkor::server
