/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/setting.h"

#include <algorithm>
#include <memory>

#include <glib.h>

#include "support/numbers.h"
#include "support/owned.h"

namespace velkor::app {
namespace {

using OwnedDateTime = std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>>;
using OwnedTimeZone = std::unique_ptr<GTimeZone, ReleaseWith<g_time_zone_unref>>;

std::string_view trimmed(std::string_view text) noexcept {
  constexpr std::string_view white = " \t\r\n";
  const std::size_t first = text.find_first_not_of(white);
  if (first == std::string_view::npos)
    return {};
  return text.substr(first, text.find_last_not_of(white) - first + 1);
}

/** What is missing of "YYYY-MM-DD HH:MM:SS", from its end. */
std::string with_time_of_day(std::string_view text) {
  constexpr std::string_view midnight = "0000-00-00T00:00:00";
  std::string whole(text);
  if (const std::size_t blank = whole.find(' '); blank != std::string::npos)
    whole[blank] = 'T';
  if (whole.size() == std::string_view("YYYY-MM-DD").size() ||
      whole.size() == std::string_view("YYYY-MM-DD HH:MM").size())
    whole += midnight.substr(whole.size());
  return whole;
}

}  // namespace

std::string SettingField::value() const {
  return values.empty() ? "" : values.front();
}

const SettingField *find_setting(const Settings &settings, std::string_view key) noexcept {
  const auto place = std::ranges::find(settings, key, &SettingField::key);
  return place == settings.end() ? nullptr : &*place;
}

SettingChanges changed_values(const Settings &settings, const SettingChanges &wanted) {
  SettingChanges changes;
  std::ranges::copy_if(wanted, std::back_inserter(changes), [&](const SettingChange &change) {
    const SettingField *field = find_setting(settings, change.key);
    return field == nullptr || field->values != change.values;
  });
  return changes;
}

SettingChanges values_before(const Settings &settings, const SettingChanges &changes) {
  SettingChanges before;
  for (const SettingChange &change : changes)
    if (const SettingField *field = find_setting(settings, change.key))
      before.push_back({change.key, field->values});
  return before;
}

std::vector<std::string> items_of_lines(std::string_view lines) {
  std::vector<std::string> items;
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    const std::string item(trimmed(lines.substr(0, end)));
    if (!item.empty() && std::ranges::find(items, item) == items.end())
      items.push_back(item);
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  return items;
}

std::string lines_of_items(const std::vector<std::string> &items) {
  std::string lines;
  for (const std::string &item : items)
    lines += (lines.empty() ? "" : "\n") + item;
  return lines;
}

std::string text_of_time(std::string_view seconds) {
  const auto number = whole_number(seconds);
  if (!number || *number == 0)
    return "";
  const OwnedDateTime time(g_date_time_new_from_unix_local(*number));
  const OwnedText text(time ? g_date_time_format(time.get(), "%Y-%m-%d %H:%M:%S") : nullptr);
  return text ? text.get() : "";
}

std::string time_of_text(std::string_view text) {
  const std::string_view words = trimmed(text);
  if (words.empty())
    return "0";
  const OwnedTimeZone zone(g_time_zone_new_local());
  const OwnedDateTime time(
      g_date_time_new_from_iso8601(with_time_of_day(words).c_str(), zone.get()));
  return time ? std::to_string(g_date_time_to_unix(time.get())) : std::string(words);
}

}  // namespace velkor::app
