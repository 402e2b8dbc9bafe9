/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a field of a record holds, and its forms: for people, for scripts, as JSON, for sorting. */
#ifndef VELKORCTL_VALUE_H
#define VELKORCTL_VALUE_H

#include <compare>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <glib.h>

#include "support/json.h"
#include "support/text.h"

namespace velkor::ctl {

/** A point in time, in seconds since 1970. */
struct Moment {
  std::int64_t seconds;
};

class Value {
public:
  using List = std::vector<Value>;
  /** Named values, and the text that stands for them where there is room for one text only. */
  struct Object {
    std::string text;
    std::vector<std::pair<std::string, Value>> members;
  };
  using Content =
      std::variant<std::monostate, bool, std::int64_t, Moment, std::string, List, Object>;

  // The constructors are implicit: whatever a record holds is a value.
  /** Nothing. */
  Value() = default;
  template <std::same_as<bool> Flag>
  Value(Flag flag) : content_(flag) {}
  template <std::integral Number>
  requires(!std::same_as<Number, bool>) Value(Number number)
      : content_(static_cast<std::int64_t>(number)) {}
  Value(Moment moment) : content_(moment) {}
  Value(std::string text) : content_(std::move(text)) {}
  Value(std::string_view text) : content_(std::string(text)) {}
  /** Nothing when there is no text. */
  Value(const char *text);
  Value(const GString *text);
  Value(List list) : content_(std::move(list)) {}
  Value(Object object) : content_(std::move(object)) {}

  [[nodiscard]] const Content &content() const noexcept { return content_; }
  /** Whether it is nothing, an empty text or an empty list. */
  [[nodiscard]] bool is_empty() const noexcept;

private:
  Content content_;
};

/** The text, or nothing when it is empty. */
Value text_or_nothing(std::string text);
/** The moment, or nothing when the seconds say that it is not known: 0 or less. */
Value moment_or_nothing(std::int64_t seconds);
/** The number, or nothing when it is 0. */
Value unless_zero(std::int64_t number);

/** For people: local time without seconds, "yes" and "no", lists with commas. */
std::string text_for_people(const Value &value);
/** For scripts: moments in ISO 8601 with the zone, "true" and "false", lists with commas. */
std::string text_for_scripts(const Value &value);

/** Adds the value as a member, or without a name to an array; moments are in ISO 8601. */
void add_to(Json &json, const char *member, const Value &value);

/** What values of one field are sorted by: numbers by size, texts as the locale says. */
class SortKey {
public:
  SortKey() = default;
  explicit SortKey(const Value &value);
  /** Nothing comes first. */
  std::strong_ordering operator<=>(const SortKey &other) const noexcept;
  bool operator==(const SortKey &other) const = default;

private:
  bool something_ = false;
  std::int64_t number_ = 0;
  std::string text_;
};

}  // namespace velkor::ctl

#endif
