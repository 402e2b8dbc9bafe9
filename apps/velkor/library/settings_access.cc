/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/settings_access.h"

#include <velkor/zox_config.h>
#include <velkor/zox_file.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_settings.h>

#include "model/servers.h"
#include "model/setting_labels.h"
#include "model/shown_text.h"
#include "support/owned.h"
#include "support/setting_values.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::app {
namespace {

using Kind = SettingField::Kind;

Kind kind_of(const ZoxSetting &setting) noexcept {
  switch (setting.type) {
  case ZOX_SETTING_TEXT:
    return setting.highest == 0 ? Kind::text : Kind::number;
  case ZOX_SETTING_SECRET:
    return Kind::secret;
  case ZOX_SETTING_FLAG:
    return Kind::flag;
  case ZOX_SETTING_NUMBER:
  case ZOX_SETTING_COUNT:
    return Kind::number;
  case ZOX_SETTING_CHOICE:
    return Kind::choice;
  case ZOX_SETTING_TIME:
    return Kind::time;
  case ZOX_SETTING_TEXT_LIST:
  case ZOX_SETTING_SPLIT_LIST:
  case ZOX_SETTING_NUMBER_LIST:
    break;
  }
  return Kind::list;
}

/** A text that is empty counts as not set; an item of a list may be empty. */
std::vector<std::string> shown_values(const ZoxSetting &setting) {
  std::vector<std::string> values = values_of(setting);
  if (kind_of(setting) != Kind::list)
    std::erase(values, "");
  return values;
}

SettingField field_of(const ZoxSetting &setting) {
  SettingField field{.key = setting.key,
                     .kind = kind_of(setting),
                     .description = setting.description,
                     .read_only = setting.readOnly != 0,
                     .lowest = setting.lowest,
                     .highest = setting.highest,
                     .values = shown_values(setting)};
  if (setting.choices != nullptr)
    field.days.assign(setting.choices, setting.choices + setting.highest + 1);
  if (setting.defaultText != nullptr)
    field.initial = setting.defaultText;
  return field;
}

ZoxSettingResult set_list(const SettingChange &change, char **message) {
  ListBuilder<ZoxString, free_string> items;
  for (const std::string &value : change.values)
    items.append(g_string_new(value.c_str()));
  return zox_settings_set_list(change.key.c_str(), items.list(), message);
}

using Why = SettingRefusal::Why;

void apply_setting(const SettingChange &change, SettingRefusals &refusals) {
  const ZoxSetting *setting = zox_settings_find(change.key.c_str());
  char *place = nullptr;
  ZoxSettingResult result = ZOX_SETTING_DONE;
  if (change.values.empty())
    result = zox_settings_reset(change.key.c_str());
  else if (setting != nullptr && kind_of(*setting) == Kind::list)
    result = set_list(change, &place);
  else
    result = zox_settings_set(change.key.c_str(), change.values.front().c_str(), &place);
  const OwnedText message(place);
  if (result != ZOX_SETTING_DONE)
    refusals.push_back({change.key,
                        result == ZOX_SETTING_OUT_OF_RANGE ? Why::out_of_range : Why::not_storable,
                        shown_line(message ? message.get() : "")});
}

/** The server that the key stands for; null when it is that of a setting. */
std::string *server_of(Servers &servers, std::string_view key) noexcept {
  if (key == main_server_key)
    return &servers.main;
  return key == dump_server_key ? &servers.dumps : nullptr;
}

void use_servers(const Servers &servers) {
  const auto host = [](const std::string &text) { return text.empty() ? nullptr : text.c_str(); };
  zox_http_set_hosts(host(servers.main), host(servers.dumps));
}

void apply_servers(const SettingChanges &changes, const std::filesystem::path &file,
                   SettingRefusals &refusals) {
  const Servers earlier = read_servers(file);
  Servers servers = earlier;
  for (const SettingChange &change : changes)
    if (std::string *server = server_of(servers, change.key)) {
      const std::string value = change.values.empty() ? "" : change.values.front();
      if (is_server(value))
        *server = value;
      else
        refusals.push_back({change.key, Why::no_server});
    }
  if (servers == earlier)
    return;
  if (std::string failure = write_servers(file, servers); !failure.empty())
    refusals.push_back({"", Why::not_saved, std::move(failure)});
  use_servers(servers);
}

SettingField server_field(std::string_view key, const std::string &server) {
  return {.key = std::string(key),
          .kind = Kind::server,
          .values = server.empty() ? std::vector<std::string>{} : std::vector{server}};
}

}  // namespace

Settings read_settings(const std::filesystem::path &servers_file) {
  Settings settings;
  for (guint32 index = 0; index < zox_settings_count(); ++index)
    settings.push_back(field_of(*zox_settings_at(index)));
  const Servers servers = read_servers(servers_file);
  settings.push_back(server_field(main_server_key, servers.main));
  settings.push_back(server_field(dump_server_key, servers.dumps));
  return settings;
}

SettingRefusals apply_settings(const SettingChanges &changes,
                               const std::filesystem::path &servers_file) {
  SettingRefusals refusals;
  Servers none;
  for (const SettingChange &change : changes)
    if (server_of(none, change.key) == nullptr)
      apply_setting(change, refusals);
  apply_servers(changes, servers_file, refusals);
  zox_config_save();
  if (const ZoxFileError *outcome = zox_file_last_error(); outcome->status != ZOX_FILE_FINE)
    refusals.push_back({"", Why::not_saved, shown_line(outcome->message)});
  return refusals;
}

}  // namespace velkor::app
