/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/setting_words.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <iterator>
#include <span>
#include <string_view>

#include <velkor/zox_string.h>

#include "support/numbers.h"
#include "velkorctl/arguments.h"
#include "velkorctl/failure.h"
#include "velkorctl/moment.h"
#include "velkorctl/settings.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using Texts = std::vector<std::string>;

/** A setting whose items have names. */
struct NamedItems {
  std::string_view key;
  const char *noun;
  Texts (*stored)(const std::string &name);
  std::string (*name)(std::int64_t number);
};

Texts stored_states(const std::string &name) {
  Texts numbers;
  for (const gint32 state : state_numbers(name))
    numbers.push_back(std::to_string(state));
  return numbers;
}

Texts stored_newsgroup(const std::string &name) {
  return {std::to_string(newsgroup_id(name))};
}

std::string name_of_state(std::int64_t number) {
  return zox_string_status(static_cast<gint32>(number));
}

std::string name_of_newsgroup(std::int64_t number) {
  return newsgroup_name(static_cast<guint32>(number));
}

const NamedItems *named_items(const ZoxSetting &setting) {
  static constexpr std::array<NamedItems, 2> all{
      {{"groupFilterList", "newsgroups", stored_newsgroup, name_of_newsgroup},
       {"statusFilter", "states", stored_states, name_of_state}}};
  const auto *found = std::ranges::find(all, setting.key, &NamedItems::key);
  return found == all.end() ? nullptr : found;
}

std::string stored_flag(const ZoxSetting &setting, const std::string &text) {
  for (const char *word : {"1", "yes", "true", "on"})
    if (same_name(text, word))
      return "1";
  for (const char *word : {"0", "no", "false", "off"})
    if (same_name(text, word))
      return "0";
  throw usage_error(std::string(setting.key) + ": \"" + text + "\" is neither yes (1) nor no (0)");
}

std::span<const gint32> choices_of(const ZoxSetting &setting) {
  return {setting.choices, static_cast<std::size_t>(setting.highest) + 1};
}

/** "7, 14 or 21 days" */
std::string choices_in_words(const ZoxSetting &setting) {
  Texts amounts;
  for (const gint32 amount : choices_of(setting))
    amounts.push_back(std::to_string(amount));
  const std::string last = amounts.back();
  amounts.pop_back();
  return joined(amounts) + " or " + last + " days";
}

/** The index of a choice of days; a number without a unit may be the index itself. */
std::string stored_choice(const ZoxSetting &setting, const std::string &text) {
  const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  const auto number = whole_number(std::string_view(text).substr(0, digits));
  const std::string unit = text.substr(std::min(text.find_first_not_of(' ', digits), text.size()));
  if (number && text.size() == digits && *number <= setting.highest)
    return std::to_string(*number);
  const auto choices = choices_of(setting);
  const auto found = std::ranges::find(choices, number.value_or(-1));
  if (found == choices.end() || (!unit.empty() && !same_name(unit, "days")))
    throw usage_error(std::string(setting.key) + ": \"" + text + "\" is not one of " +
                      choices_in_words(setting) + ", nor the number of one from 0 to " +
                      std::to_string(setting.highest));
  return std::to_string(found - choices.begin());
}

std::string stored_time(const ZoxSetting &setting, const std::string &text) {
  if (same_name(text, "never"))
    return "0";
  if (whole_number(text))
    return text;
  const auto seconds = parse_moment(text, std::time(nullptr), DayEdge::first_second);
  if (!seconds)
    throw usage_error(std::string(setting.key) + ": \"" + text +
                      "\" is neither a time nor a number of seconds since 1970");
  return std::to_string(*seconds);
}

std::string time_in_words(std::int64_t seconds) {
  return seconds == 0 ? "never" : show_moment(seconds);
}

std::string choice_in_words(const ZoxSetting &setting, std::int64_t index) {
  if (index < 0 || index > setting.highest)
    return "not one of its choices";
  return std::to_string(choices_of(setting)[static_cast<std::size_t>(index)]) + " days";
}

std::string range_in_words(const ZoxSetting &setting) {
  return std::to_string(setting.lowest) + " to " + std::to_string(setting.highest);
}

}  // namespace

Texts stored_forms(const ZoxSetting &setting, const Texts &values) {
  const NamedItems *names = named_items(setting);
  Texts stored;
  for (const std::string &value : values)
    if (names != nullptr)
      std::ranges::copy(names->stored(value), std::back_inserter(stored));
    else if (setting.type == ZOX_SETTING_FLAG)
      stored.push_back(stored_flag(setting, value));
    else if (setting.type == ZOX_SETTING_CHOICE)
      stored.push_back(stored_choice(setting, value));
    else if (setting.type == ZOX_SETTING_TIME)
      stored.push_back(stored_time(setting, value));
    else
      stored.push_back(value);
  return stored;
}

std::string meaning_of(const ZoxSetting &setting, const std::string &value) {
  const auto number = whole_number(value);
  if (!number)
    return "";
  if (const NamedItems *names = named_items(setting)) {
    const std::string name = names->name(*number);
    return name == value ? "" : name;
  }
  switch (setting.type) {
  case ZOX_SETTING_FLAG:
    return *number == 0 ? "no" : "yes";
  case ZOX_SETTING_CHOICE:
    return choice_in_words(setting, *number);
  case ZOX_SETTING_TIME:
    return time_in_words(*number);
  default:
    return "";
  }
}

std::string with_meaning(const ZoxSetting &setting, const std::string &value) {
  const std::string meaning = meaning_of(setting, value);
  return meaning.empty() ? value : value + " (" + meaning + ")";
}

std::string possible_values(const ZoxSetting &setting) {
  if (setting.readOnly != 0)
    return "given by the server";
  if (const NamedItems *names = named_items(setting))
    return "a list of " + std::string(names->noun) + ", by name or number";
  const bool ranged = setting.highest != 0;
  switch (setting.type) {
  case ZOX_SETTING_FLAG:
    return "yes or no";
  case ZOX_SETTING_CHOICE:
    return choices_in_words(setting);
  case ZOX_SETTING_TIME:
    return "a time, seconds since 1970 or never";
  case ZOX_SETTING_SECRET:
    return "a password, with --stdin";
  case ZOX_SETTING_TEXT_LIST:
    return ranged ? "a list of numbers, " + range_in_words(setting) : "a list of texts";
  default:
    return ranged ? range_in_words(setting) : "a text";
  }
}

std::string default_in_words(const ZoxSetting &setting) {
  if (setting.defaultText == nullptr)
    return holds_list(setting) ? "empty" : "not set";
  if (*setting.defaultText == '\0')
    return "empty";
  const std::string meaning = meaning_of(setting, setting.defaultText);
  return meaning.empty() ? setting.defaultText : meaning;
}

}  // namespace velkor::ctl
