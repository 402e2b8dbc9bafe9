/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Builds a JSON document. */
#ifndef VELKOR_SUPPORT_JSON_H
#define VELKOR_SUPPORT_JSON_H

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include <json-glib/json-glib.h>

#include "support/owned.h"

namespace velkor {

/**
 * Builds one value, in the order of the calls. An object's members are given with their names; what
 * has none is the whole value or belongs to an array.
 */
class Json {
public:
  Json();

  Json &begin_object(const char *member = nullptr);
  Json &begin_array(const char *member = nullptr);
  Json &end_object();
  Json &end_array();

  /** A text; bytes that are no UTF-8 become U+FFFD. */
  Json &value(std::string_view text);
  Json &value(const char *text) { return value(std::string_view(text)); }
  /** Null when there is no text. */
  Json &value(const GString *text);
  Json &value(bool flag);
  template <std::integral Number>
  Json &value(Number number) {
    return integer(static_cast<std::int64_t>(number));
  }
  Json &null();

  template <typename Value>
  Json &member(const char *name, const Value &content) {
    return begin_member(name).value(content);
  }
  Json &null_member(const char *name) { return begin_member(name).null(); }

  /** The value on one line, without any character that a terminal may act on. */
  [[nodiscard]] std::string compact() const;
  /** The value over several lines, with a line feed at the end. */
  [[nodiscard]] std::string pretty() const;

private:
  Json &begin_member(const char *name);
  Json &integer(std::int64_t number);
  [[nodiscard]] OwnedText text(bool pretty) const;

  OwnedObject<JsonBuilder> builder_;
};

}  // namespace velkor

#endif
