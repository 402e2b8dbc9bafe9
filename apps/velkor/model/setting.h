/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The settings as fields of a form, and what a form has changed about them. */
#ifndef VELKOR_APP_MODEL_SETTING_H
#define VELKOR_APP_MODEL_SETTING_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor::app {

struct SettingField {
  enum class Kind { text, secret, server, number, flag, choice, time, list };

  std::string key;
  Kind kind = Kind::text;
  std::string description{};  // one English sentence, which the catalogues translate
  bool read_only = false;     // the server gives the value
  std::int64_t lowest = 0;
  std::int64_t highest = 0;          // 0 without a range
  std::vector<std::int32_t> days{};  // what the numbers of a choice stand for
  std::optional<std::string> initial{};
  std::vector<std::string> values{};  // as the file holds them; a single one but for lists

  [[nodiscard]] bool has_range() const noexcept { return highest != 0; }
  /** The value of a field that is no list; empty when it is not set. */
  [[nodiscard]] std::string value() const;
};

using Settings = std::vector<SettingField>;

/** New values for a setting; none at all give it its default. */
struct SettingChange {
  std::string key;
  std::vector<std::string> values;

  bool operator==(const SettingChange &) const = default;
};

using SettingChanges = std::vector<SettingChange>;

/** Why a value was not taken; the setting is unchanged. */
struct SettingRefusal {
  enum class Why { out_of_range, no_server, not_storable, not_saved };

  std::string key;  // empty when the file could not be written
  Why why = Why::not_saved;
  std::string reason{};  // the library's sentence
};

using SettingRefusals = std::vector<SettingRefusal>;

/** The field of that key; null when there is none. */
const SettingField *find_setting(const Settings &settings, std::string_view key) noexcept;

/** Of `wanted`, what differs from the values in `settings`. */
SettingChanges changed_values(const Settings &settings, const SettingChanges &wanted);

/** The values that these settings have in `settings`: what undoes the changes. */
SettingChanges values_before(const Settings &settings, const SettingChanges &changes);

/** One item a line, without the white space around it; empty lines and repetitions are left out. */
std::vector<std::string> items_of_lines(std::string_view lines);
std::string lines_of_items(const std::vector<std::string> &items);

/** "2026-11-21 14:05:09" in the user's time zone; empty for 0, which is never. */
std::string text_of_time(std::string_view seconds);
/**
 * The seconds for a text as text_of_time() makes it, also without seconds or time of day; "0" for
 * an empty text. A text that is no time comes back as it is, so that it is refused where all others
 * are.
 */
std::string time_of_text(std::string_view text);

}  // namespace velkor::app

#endif
