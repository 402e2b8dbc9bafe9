/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl config: shows and changes the settings of "velkor.conf". */
#include <string>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/settings.h"
#include "velkorctl/terminal.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

bool is_secret(const Setting &setting) noexcept {
  return setting.kind == Setting::Kind::secret;
}

/** The values to list; a password is only shown by config get. */
std::vector<std::string> shown_values(const Setting &setting) {
  std::vector<std::string> values = values_of(setting, *core->config);
  if (is_secret(setting) && !values.empty())
    values = {"********"};
  return values;
}

Exit run_get(const Context &context) {
  const Setting &setting = setting_called(context.arguments.required("KEY"));
  if (is_secret(setting) && !context.arguments.has("--show-secret"))
    throw usage_error(std::string(setting.key) + " is a password; use --show-secret to print it");
  const CoreSession session(context.options, Access::read, Load::settings);
  const std::vector<std::string> values = values_of(setting, *core->config);
  if (values.empty() && !holds_list(setting))
    throw Failure(Exit::not_found, std::string(setting.key) + " is not set");
  for (const std::string &value : values)
    context.out.write(safe_text(value) + "\n");
  return Exit::ok;
}

void print_table(const Context &context) {
  Table table({{"KEY"}, {"VALUE", Column::Align::left, true}});
  for (const Setting &setting : all_settings())
    table.add({setting.key, joined(shown_values(setting))});
  print(table, context);
}

void print_json(const Context &context) {
  Json json;
  json.begin_object();
  for (const Setting &setting : all_settings()) {
    const std::vector<std::string> values = shown_values(setting);
    if (holds_list(setting)) {
      json.begin_array(setting.key);
      for (const std::string &value : values)
        json.item(value);
      json.end_array();
    } else if (values.empty()) {
      json.null(setting.key);
    } else {
      json.text(setting.key, values.front());
    }
  }
  print(json.end_object(), context);
}

Exit run_list(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::settings);
  if (wants_json(context.arguments))
    print_json(context);
  else
    print_table(context);
  return Exit::ok;
}

/** The values of the arguments, or the line on standard input. */
std::vector<std::string> values_given(const Setting &setting, const Arguments &arguments) {
  std::vector<std::string> values = arguments.values("VALUE");
  if (arguments.has("--stdin")) {
    if (!values.empty())
      throw usage_error("--stdin cannot be combined with a value");
    return {read_secret(std::string(setting.key) + ": ")};
  }
  if (is_secret(setting))
    throw usage_error(std::string(setting.key) +
                      " cannot be given on the command line, where others can see it; "
                      "use --stdin");
  if (values.empty() && !holds_list(setting))
    throw usage_error("VALUE is missing");
  return values;
}

void change(const Context &context, const Setting &setting,
            const std::vector<std::string> &values) {
  CoreSession session(context.options, Access::write, Load::settings);
  assign(setting, *core->config, values);
  session.save_settings();
}

Exit run_set(const Context &context) {
  const Setting &setting = setting_called(context.arguments.required("KEY"));
  change(context, setting, values_given(setting, context.arguments));
  return Exit::ok;
}

Exit run_unset(const Context &context) {
  change(context, setting_called(context.arguments.required("KEY")), {});
  return Exit::ok;
}

Argument key_argument() {
  return {"KEY", "The name of the setting, as in velkor.conf"};
}

}  // namespace

std::vector<Command> config_commands() {
  return {
      {"get",
       "Print a setting; the items of a list one per line",
       {key_argument()},
       {{"--show-secret", "", "Print the setting even if it is a password"}},
       run_get},
      {"list", "Print all settings; passwords stay hidden", {}, with_format_options({}), run_list},
      {"set",
       "Change a setting",
       {key_argument(), {"VALUE", "The new value; several for a list", Argument::Count::any}},
       {{"--stdin", "", "Read the value from standard input; a terminal does not show it"}},
       run_set},
      {"unset", "Reset a setting to its default", {key_argument()}, {}, run_unset},
  };
}

}  // namespace velkor::ctl
