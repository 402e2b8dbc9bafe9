/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** JSON for scripts: one object per line, without control characters. */
#ifndef VELKORCTL_JSON_H
#define VELKORCTL_JSON_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <json-glib/json-glib.h>

#include "support/owned.h"

namespace velkor::ctl {

class Output;

/** Builds one value, in the order of the calls; members of an object are given by name. */
class Json {
public:
  Json();

  Json &begin_object(const char *member = nullptr);
  Json &begin_array(const char *member = nullptr);
  Json &end_object();
  Json &end_array();

  Json &text(const char *member, std::string_view value);
  /** Null when there is no text. */
  Json &text(const char *member, const GString *value);
  Json &number(const char *member, std::int64_t value);
  Json &flag(const char *member, bool value);
  Json &null(const char *member);
  /** A member of an array. */
  Json &item(std::string_view value);
  Json &item(std::int64_t value);

  /** The value, on one line. */
  [[nodiscard]] std::string compact() const;

private:
  void name(const char *name);

  OwnedObject<JsonBuilder> builder_;
};

/** Prints an array with one value per line as the values are added. */
class JsonLines {
public:
  explicit JsonLines(Output &output) : output_(output) {}
  void add(const Json &value);
  void finish();

private:
  Output &output_;
  bool empty_ = true;
};

}  // namespace velkor::ctl

#endif
