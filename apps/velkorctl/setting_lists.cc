/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/setting_lists.h"

#include <algorithm>
#include <string>
#include <vector>

#include <velkor/zox_app_core.h>

#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/json.h"
#include "velkorctl/messages.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/settings.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

}  // namespace

Exit add_to_setting(const Context &context, const char *key) {
  const Setting &setting = setting_called(key);
  CoreSession session(context.options, Access::write, Load::settings);
  std::vector<std::string> items = values_of(setting, *core->config);
  for (const std::string &text : context.arguments.values("TEXT")) {
    if (std::find(items.begin(), items.end(), text) != items.end())
      say("\"" + text + "\" is already there");
    else
      items.push_back(text);
  }
  assign(setting, *core->config, items);
  session.save_settings();
  return Exit::ok;
}

Exit remove_from_setting(const Context &context, const char *key) {
  const Setting &setting = setting_called(key);
  CoreSession session(context.options, Access::write, Load::settings);
  std::vector<std::string> items = values_of(setting, *core->config);
  for (const std::string &text : context.arguments.values("TEXT")) {
    const auto found = std::find(items.begin(), items.end(), text);
    if (found == items.end())
      throw Failure(Exit::not_found, "\"" + text + "\" is not there");
    items.erase(found);
  }
  assign(setting, *core->config, items);
  session.save_settings();
  return Exit::ok;
}

Exit print_setting(const Context &context, const char *key) {
  const CoreSession session(context.options, Access::read, Load::settings);
  Json json;
  json.begin_array();
  std::string lines;
  for (const std::string &item : values_of(setting_called(key), *core->config)) {
    json.item(item);
    lines += safe_text(item) + "\n";
  }
  context.out.write(wants_json(context.arguments) ? json.end_array().compact() + "\n" : lines);
  return Exit::ok;
}

}  // namespace velkor::ctl
