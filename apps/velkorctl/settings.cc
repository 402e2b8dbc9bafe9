/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/settings.h"

#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/failure.h"
#include "velkorctl/setting_words.h"
#include "velkorctl/suggestion.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

void require(ZoxSettingResult result, char *message) {
  const OwnedText reason(message);
  if (result != ZOX_SETTING_DONE)
    throw usage_error(reason.get());
}

void assign_list(const ZoxSetting &setting, const std::vector<std::string> &values) {
  TextList items;
  for (const std::string &value : values)
    items.append(g_string_new(value.c_str()));
  char *message = nullptr;
  const ZoxSettingResult result = zox_settings_set_list(setting.key, items.list(), &message);
  require(result, message);
}

void assign_value(const ZoxSetting &setting, const std::string &value) {
  char *message = nullptr;
  const ZoxSettingResult result = zox_settings_set(setting.key, value.c_str(), &message);
  require(result, message);
}

std::vector<std::string> keys() {
  std::vector<std::string> result;
  for (const ZoxSetting *setting : all_settings())
    result.emplace_back(setting->key);
  return result;
}

}  // namespace

std::vector<const ZoxSetting *> all_settings() {
  std::vector<const ZoxSetting *> settings;
  for (guint32 index = 0; index < zox_settings_count(); ++index)
    settings.push_back(zox_settings_at(index));
  return settings;
}

const ZoxSetting &setting_called(const std::string &key) {
  const ZoxSetting *setting = zox_settings_find(key.c_str());
  if (setting == nullptr)
    throw usage_error("unknown setting \"" + key + "\"" + suggestion(key, keys()) +
                      " (see velkorctl config list)");
  return *setting;
}

bool holds_list(const ZoxSetting &setting) noexcept {
  return setting.type == ZOX_SETTING_TEXT_LIST || setting.type == ZOX_SETTING_SPLIT_LIST ||
         setting.type == ZOX_SETTING_NUMBER_LIST;
}

bool is_secret(const ZoxSetting &setting) noexcept {
  return setting.type == ZOX_SETTING_SECRET;
}

void assign(const ZoxSetting &setting, const std::vector<std::string> &values) {
  if (setting.readOnly != 0)
    throw usage_error(std::string(setting.key) +
                      " comes from the server with every update and cannot be set");
  if (values.size() > 1 && !holds_list(setting))
    throw usage_error(std::string(setting.key) + " takes one value");
  if (values.empty())
    zox_settings_reset(setting.key);
  else if (const std::vector<std::string> stored = stored_forms(setting, values);
           holds_list(setting))
    assign_list(setting, stored);
  else
    assign_value(setting, stored.front());
}

}  // namespace velkor::ctl
