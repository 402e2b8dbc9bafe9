/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl config: shows and changes the settings of "velkor.conf". */
#include <string>
#include <vector>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/setting_words.h"
#include "velkorctl/settings.h"
#include "velkorctl/terminal.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

/** The values to list; a password is only shown by config get. */
std::vector<std::string> shown_values(const ZoxSetting &setting) {
  std::vector<std::string> values = values_of(setting);
  if (is_secret(setting) && !values.empty())
    values = {"********"};
  return values;
}

Option explain_option(const std::string &help) {
  return {"--explain", "", help};
}

Exit run_get(const Context &context) {
  const ZoxSetting &setting = setting_called(context.arguments.required("KEY"));
  if (is_secret(setting) && !context.arguments.has("--show-secret"))
    throw usage_error(std::string(setting.key) + " is a password; use --show-secret to print it");
  const bool explained = context.arguments.has("--explain") || context.out.width() > 0;
  const CoreSession session(context.options, Access::read, Load::settings);
  const std::vector<std::string> values = values_of(setting);
  if (values.empty() && !holds_list(setting))
    throw Failure(Exit::not_found, std::string(setting.key) + " is not set");
  for (const std::string &value : values)
    context.out.write(safe_text(explained ? with_meaning(setting, value) : value) + "\n");
  return Exit::ok;
}

void print_table(const Context &context) {
  Table table({{"KEY"}, {"VALUE", Column::Align::left, true}});
  for (const ZoxSetting *setting : all_settings())
    table.add({setting->key, joined(shown_values(*setting))});
  print(table, context);
}

/** "trayIcon = 1 (yes)" */
std::string assignment_in_words(const ZoxSetting &setting) {
  std::vector<std::string> values = shown_values(setting);
  if (values.empty() && !holds_list(setting))
    return setting.key + std::string(" is not set");
  if (values.empty() || values == std::vector<std::string>{""})
    return setting.key + std::string(" is empty");
  for (std::string &value : values)
    value = with_meaning(setting, value);
  return std::string(setting.key) + " = " + joined(values);
}

void print_explanations(const Context &context) {
  std::string text;
  for (const ZoxSetting *setting : all_settings()) {
    const char *user = setting->user == ZOX_SETTING_LIBRARY ? "library" : "front end";
    text += safe_text(assignment_in_words(*setting)) + "\n    " + setting->description +
            "\n    Values: " + possible_values(*setting) +
            "; default: " + default_in_words(*setting) + "; used by the " + user + ".\n";
  }
  context.out.write(text);
}

void add_values(Json &json, const char *member, const ZoxSetting &setting) {
  const std::vector<std::string> values = shown_values(setting);
  if (!holds_list(setting)) {
    if (values.empty())
      json.null_member(member);
    else
      json.member(member, values.front());
    return;
  }
  json.begin_array(member);
  for (const std::string &value : values)
    json.value(value);
  json.end_array();
}

void print_json(const Context &context) {
  Json json;
  json.begin_object();
  for (const ZoxSetting *setting : all_settings())
    add_values(json, setting->key, *setting);
  print(json.end_object(), context);
}

void print_explanations_as_json(const Context &context) {
  JsonLines lines(context.out);
  for (const ZoxSetting *setting : all_settings()) {
    Json json;
    json.begin_object().member("key", setting->key);
    add_values(json, "value", *setting);
    if (!holds_list(*setting))
      json.member("meaning", meaning_of(*setting, joined(shown_values(*setting))));
    json.member("description", setting->description).member("values", possible_values(*setting));
    json.member("default", default_in_words(*setting));
    json.member("user", setting->user == ZOX_SETTING_LIBRARY ? "library" : "front end");
    lines.add(json.end_object());
  }
  lines.finish();
}

Exit run_list(const Context &context) {
  const Arguments &arguments = context.arguments;
  const bool explained = arguments.has("--explain");
  const bool table_wanted = arguments.has("--format") || arguments.has("--no-header");
  const CoreSession session(context.options, Access::read, Load::settings);
  if (wants_json(arguments))
    explained ? print_explanations_as_json(context) : print_json(context);
  else if (explained || (context.out.width() > 0 && !table_wanted))
    print_explanations(context);
  else
    print_table(context);
  return Exit::ok;
}

/** The values of the arguments, or the line on standard input. */
std::vector<std::string> values_given(const ZoxSetting &setting, const Arguments &arguments) {
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

void change(const Context &context, const ZoxSetting &setting,
            const std::vector<std::string> &values) {
  CoreSession session(context.options, Access::write, Load::settings);
  assign(setting, values);
  session.save_settings();
}

Exit run_set(const Context &context) {
  const ZoxSetting &setting = setting_called(context.arguments.required("KEY"));
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
       {{"--show-secret", "", "Print the setting even if it is a password"},
        explain_option("Print what the value means as well; a terminal always shows it")},
       run_get},
      {"list",
       "Print all settings; passwords stay hidden",
       {},
       with_format_options({explain_option(
           "Explain each setting; on a terminal that is the default without --format")}),
       run_list},
      {"set",
       "Change a setting",
       {key_argument(),
        {"VALUE",
         "The new value, stored or in words: yes or no, 28 days, a date, the name of a newsgroup "
         "or "
         "state; several for a list",
         Argument::Count::any}},
       {{"--stdin", "", "Read the value from standard input; a terminal does not show it"}},
       run_set},
      {"unset", "Reset a setting to its default", {key_argument()}, {}, run_unset},
  };
}

}  // namespace velkor::ctl
