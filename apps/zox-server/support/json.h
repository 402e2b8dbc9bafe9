/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writes a JSON document incrementally. */
#ifndef ZOX_SERVER_SUPPORT_JSON_H
#define ZOX_SERVER_SUPPORT_JSON_H

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include <json-glib/json-glib.h>

#include "support/owned.h"

namespace velkor::server {

class JsonWriter {
public:
  JsonWriter() : builder_(json_builder_new()) {}

  JsonWriter &begin_object();
  JsonWriter &end_object();
  JsonWriter &begin_array();
  JsonWriter &end_array();
  JsonWriter &name(const char *name);
  JsonWriter &value(std::string_view text);
  JsonWriter &value(const char *text) { return value(std::string_view(text)); }
  JsonWriter &value(bool truth);
  template <std::integral Number>
  JsonWriter &value(Number number) {
    return integer(static_cast<std::int64_t>(number));
  }
  template <typename Value>
  JsonWriter &member(const char *member_name, const Value &member_value) {
    return name(member_name).value(member_value);
  }

  /** @return the whole document, ending with a newline */
  std::string finish();

private:
  JsonWriter &integer(std::int64_t number);

  OwnedObject<JsonBuilder> builder_;
};

}  // namespace velkor::server

#endif
