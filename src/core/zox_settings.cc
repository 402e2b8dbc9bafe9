/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_settings.h>

#include <charconv>
#include <optional>
#include <string>
#include <vector>

#include <velkor/zox_app_core.h>

#include "core/core_lock.h"
#include "core/setting_line.h"
#include "core/settings.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::settings {
namespace {

using Texts = std::vector<std::string>;

/** Why a value is refused; the message is for the user. */
struct Refusal {
  ZoxSettingResult code;
  std::string message;
};
using Verdict = std::optional<Refusal>;

bool is_list(const Setting &setting) noexcept {
  return std::holds_alternative<SplitList>(setting.field) ||
         std::holds_alternative<TextList>(setting.field) ||
         std::holds_alternative<NumberList>(setting.field);
}

std::optional<gint64> whole_number(const std::string &text) noexcept {
  gint64 number = 0;
  const char *end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || stopped != end)
    return std::nullopt;
  return number;
}

Verdict not_storable(const ZoxSetting &facts, const char *reason) noexcept {
  return Refusal{ZOX_SETTING_NOT_STORABLE, std::string(facts.key) + ": " + reason};
}

/** A number is put into its usual form, without zeros in front. */
Verdict check_number(const ZoxSetting &facts, std::string &value) noexcept {
  const auto number = whole_number(value);
  if (number && *number >= facts.lowest && *number <= facts.highest) {
    value = std::to_string(*number);
    return std::nullopt;
  }
  return Refusal{ZOX_SETTING_OUT_OF_RANGE,
                 std::string(facts.key) + ": \"" + value + "\" is not a number from " +
                     std::to_string(facts.lowest) + " to " + std::to_string(facts.highest)};
}

/** A value has to come back from the file as it was. */
Verdict check_text(const ZoxSetting &facts, const std::string &value) noexcept {
  if (before_control(value).size() != value.size())
    return not_storable(facts, "the value has a line break or a control character");
  if (stripped(value).size() != value.size())
    return not_storable(facts, "the value begins or ends with white space");
  if (value.size() > room_for_value(facts.key))
    return not_storable(facts, "the value is too long for velkor.conf");
  return std::nullopt;
}

Verdict check_value(const ZoxSetting &facts, std::string &value) noexcept {
  return has_range(facts) ? check_number(facts, value) : check_text(facts, value);
}

Verdict check_items(const Setting &setting, Texts &items) noexcept {
  std::size_t length = 1;
  for (std::string &item : items) {
    if (item.empty())
      return not_storable(setting.facts, "an item is empty");
    if (Verdict refusal = check_value(setting.facts, item))
      return refusal;
    length += item.size() + 1;
  }
  if (std::holds_alternative<SplitList>(setting.field) &&
      length > room_for_value(setting.facts.key))
    return not_storable(setting.facts, "there are too many items for velkor.conf");
  return std::nullopt;
}

/** Whether the setting may be changed, and by a list or a single value. */
Verdict check_access(const Setting *setting, const char *key, bool list) noexcept {
  if (setting == nullptr)
    return Refusal{ZOX_SETTING_UNKNOWN, "unknown setting \"" + std::string(key) + "\""};
  if (setting->facts.readOnly != 0)
    return Refusal{ZOX_SETTING_READ_ONLY,
                   std::string(key) + " comes from the server and cannot be set"};
  if (is_list(*setting) != list)
    return Refusal{ZOX_SETTING_WRONG_TYPE,
                   std::string(key) + (list ? " takes one value" : " takes a list of values")};
  return std::nullopt;
}

ZoxSettingResult report(const Verdict &refusal, char **message) noexcept {
  hand_over(message, OwnedText(refusal ? g_strdup(refusal->message.c_str()) : nullptr));
  return refusal ? refusal->code : ZOX_SETTING_DONE;
}

void put_items(ZoxConfig &config, const Setting &setting, const Texts &items) noexcept {
  const CoreWriter guard;
  set_default(config, setting);
  std::string stored = "|";
  for (const std::string &item : items)
    stored += item + "|";
  if (std::holds_alternative<SplitList>(setting.field))
    return read(config, setting, stored.c_str());
  for (const std::string &item : items)
    read(config, setting, item.c_str());
  complete(config, setting);
}

/** The value as text; a list has none. */
struct Value {
  const ZoxConfig &config;
  ZoxString *operator()(const Text &field) const noexcept {
    return copy_string(config.*field.member);
  }
  ZoxString *operator()(const Time &field) const noexcept { return decimal(config.*field.member); }
  ZoxString *operator()(const Count &field) const noexcept { return decimal(config.*field.member); }
  ZoxString *operator()(const Number &field) const noexcept {
    return decimal(config.*field.member);
  }
  ZoxString *operator()(const auto &) const noexcept { return nullptr; }

private:
  static ZoxString *decimal(gint64 number) noexcept {
    return g_string_new(std::to_string(number).c_str());
  }
};

/** The items as texts; what is no list has none. */
struct ItemTexts {
  const ZoxConfig &config;
  GSList *operator()(const SplitList &field) const noexcept {
    return zox_splitted_list_duplicate(config.*field.member);
  }
  GSList *operator()(const TextList &field) const noexcept {
    return zox_splitted_list_duplicate(config.*field.member);
  }
  GSList *operator()(const NumberList &field) const noexcept {
    ListBuilder<ZoxString, free_string> items;
    for (const void *item : Items<void>(config.*field.member))
      items.append(g_string_new(decimal(GPOINTER_TO_INT(item)).c_str()));
    return items.release();
  }
  GSList *operator()(const auto &) const noexcept { return nullptr; }
};

Verdict set(ZoxConfig &config, const char *key, std::string value) noexcept {
  const Setting *setting = find(key);
  if (Verdict refusal = check_access(setting, key, false))
    return refusal;
  if (Verdict refusal = value.empty() && std::holds_alternative<Text>(setting->field)
                            ? std::nullopt
                            : check_value(setting->facts, value))
    return refusal;
  const CoreWriter guard;
  read(config, *setting, value.c_str());
  return std::nullopt;
}

Verdict set_list(ZoxConfig &config, const char *key, Texts items) noexcept {
  const Setting *setting = find(key);
  if (Verdict refusal = check_access(setting, key, true))
    return refusal;
  if (Verdict refusal = check_items(*setting, items))
    return refusal;
  put_items(config, *setting, items);
  return std::nullopt;
}

}  // namespace
}  // namespace velkor::settings

using namespace velkor;

extern "C" {

guint32 zox_settings_count(void) {
  return static_cast<guint32>(settings::table().size());
}

const ZoxSetting *zox_settings_at(guint32 index) {
  const auto table = settings::table();
  return index < table.size() ? &table[index].facts : nullptr;
}

const ZoxSetting *zox_settings_find(const char *key) {
  const settings::Setting *setting = settings::find(key);
  return setting == nullptr ? nullptr : &setting->facts;
}

ZoxString *zox_settings_get(const char *key) {
  ZOX_ASSERT(core);
  const CoreReader guard;
  ZOX_ASSERT(core->config);
  const settings::Setting *setting = settings::find(key);
  return setting == nullptr ? nullptr : std::visit(settings::Value{*core->config}, setting->field);
}

ZoxSplittedList *zox_settings_get_list(const char *key) {
  ZOX_ASSERT(core);
  const CoreReader guard;
  ZOX_ASSERT(core->config);
  const settings::Setting *setting = settings::find(key);
  return setting == nullptr ? nullptr
                            : std::visit(settings::ItemTexts{*core->config}, setting->field);
}

ZoxSettingResult zox_settings_set(const char *key, const char *text, char **message) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  return settings::report(settings::set(*core->config, key, text), message);
}

ZoxSettingResult zox_settings_set_list(const char *key, const GSList *texts, char **message) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  settings::Texts items;
  for (const ZoxString *item : Items<ZoxString>(texts))
    items.emplace_back(view_of(item));
  return settings::report(settings::set_list(*core->config, key, std::move(items)), message);
}

ZoxSettingResult zox_settings_reset(const char *key) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  const settings::Setting *setting = settings::find(key);
  if (setting == nullptr)
    return ZOX_SETTING_UNKNOWN;
  if (setting->facts.readOnly != 0)
    return ZOX_SETTING_READ_ONLY;
  const CoreWriter guard;
  settings::set_default(*core->config, *setting);
  return ZOX_SETTING_DONE;
}

}  // extern "C"
