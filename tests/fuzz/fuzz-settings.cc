/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Settings that replies and users change are saved and loaded again: no value becomes another
 * line, and the settings that nobody changed are as they were. */
#include <algorithm>
#include <string>
#include <string_view>

#include <velkor/velkor.h>

#include "core/setting_line.h"
#include "core/settings.h"
#include "support/slist.h"
#include "support/text.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"
#include "tests/fuzz/transfers.h"

namespace velkor::fuzz {
namespace {

std::string as_saved() {
  const OwnedString text(g_string_new(nullptr));
  settings::write(*core->config, text.get());
  return std::string(view_of(text.get()));
}

/** Checks the lines; gives them as they come back, without white space around a value. */
std::string checked_lines(const std::string &file) {
  std::string lines;
  for (std::size_t begin = 0; begin < file.size();) {
    const std::size_t end = file.find('\n', begin);
    require(end != std::string::npos, "every line has an end");
    const std::string line = file.substr(begin, end - begin);
    require(line.size() < 1024, "every line fits into the reader's buffer");
    const std::size_t equals = std::min(line.find('='), line.size() - 1);
    require(zox_settings_find(line.substr(0, equals).c_str()) != nullptr,
            "every line is that of a setting");
    lines += line.substr(0, equals + 1);
    lines.append(settings::stripped(std::string_view(line).substr(equals + 1))).append("\n");
    begin = end + 1;
  }
  return lines;
}

void require_account_untouched() {
  require(
      view_of(core->config->username) == "fuzz" && view_of(core->config->password) == "geheim" &&
          view_of(core->config->proxyHost) == "proxy.example" && core->config->proxyUser == nullptr,
      "account and proxy are as they were");
}

/** The reply that tells about the service, with the members online. */
void take_reply(Input &input) {
  const OwnedString text(g_string_new(input.text().c_str()));
  gint64 stamp = 0;
  GSList *chunks = nullptr;
  char *message = nullptr;
  zox_events_list_parse(text.get(), &stamp, &chunks, &message);
  core->config->lastCheck = stamp;
  g_slist_free_full(chunks, g_free);
  g_free(message);
  zox_group_free_all();
}

void restore_watchlist(Input &input) {
  const std::string reply = input.text();
  answer_requests([&reply](const std::string &) { return reply; });
  zox_watchlist_download(nullptr);
}

/** What a setting was set to, if it was. */
struct Change {
  std::string key;
  std::string value;
};

bool is_account(std::string_view key) {
  return key == "username" || key == "password" || key.starts_with("proxy");
}

bool is_list(const ZoxSetting &setting) {
  return setting.type == ZOX_SETTING_SPLIT_LIST || setting.type == ZOX_SETTING_TEXT_LIST ||
         setting.type == ZOX_SETTING_NUMBER_LIST;
}

void set_value(const ZoxSetting &setting, Input &input, Change &change) {
  const std::string value = input.text();
  if (zox_settings_set(setting.key, value.c_str(), nullptr) != ZOX_SETTING_DONE)
    return;
  const OwnedString taken(zox_settings_get(setting.key));
  change = {setting.key, std::string(view_of(taken.get()))};
}

void set_items(const ZoxSetting &setting, Input &input) {
  ZoxSplittedList *items = zox_splitted_list_split(input.text().c_str());
  zox_settings_set_list(setting.key, items, nullptr);
  zox_splitted_list_free(&items);
}

void set_one(Input &input, Change &change) {
  const ZoxSetting &setting = *zox_settings_at(input.below(zox_settings_count()));
  if (is_account(setting.key))
    return;
  if (is_list(setting))
    set_items(setting, input);
  else
    set_value(setting, input, change);
}

/** Values that did not come through the checks, as a front end may put them into the record. */
void put_raw(Input &input) {
  replace_string(core->config->htmlRenderer, zox_string_new(input.text().c_str()));
  core->config->watcher =
      g_slist_prepend(core->config->watcher, zox_string_new(input.text().c_str()));
  core->config->badword =
      g_slist_prepend(core->config->badword, zox_string_new(input.text().c_str()));
}

Change change_settings(Input &input) {
  Change change;
  while (!input.empty()) {
    switch (input.below(4)) {
    case 0:
      take_reply(input);
      break;
    case 1:
      restore_watchlist(input);
      break;
    case 2:
      put_raw(input);
      break;
    default:
      set_one(input, change);
    }
  }
  return change;
}

void require_kept(const Change &change) {
  if (change.key.empty() || change.key == "htmlRenderer" || change.key == "lastCheck")
    return;  // later changes may have replaced it
  const OwnedString value(zox_settings_get(change.key.c_str()));
  require(view_of(value.get()) == change.value,
          "a setting that was taken comes back from the file");
}

void start_anew() {
  clear_cache();
  reset_settings();
  empty_list();
  replace_string(core->config->proxyHost, zox_string_new("proxy.example"));
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  fuzz::Input input(data, size);
  fuzz::start_anew();
  const fuzz::Change change = fuzz::change_settings(input);
  fuzz::require_account_untouched();
  const std::string lines = fuzz::checked_lines(fuzz::as_saved());
  zox_config_save();
  zox_config_load();
  fuzz::require_account_untouched();
  fuzz::require_kept(change);
  fuzz::require(fuzz::checked_lines(fuzz::as_saved()) == lines, "every line comes back");
  return 0;
}
