/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl config: shows and changes the settings of "velkor.conf". */
#include <string>
#include <vector>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/record_printer.h"
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

using Setting = const ZoxSetting *;

Value values_or_nothing(const ZoxSetting &setting, const std::vector<std::string> &values) {
  if (holds_list(setting))
    return Value::List(values.begin(), values.end());
  return values.empty() ? Value() : Value(values.front());
}

Value meaning_or_nothing(const ZoxSetting &setting, const std::vector<std::string> &values) {
  std::vector<std::string> meanings;
  for (const std::string &value : values)
    if (std::string meaning = meaning_of(setting, value); !meaning.empty())
      meanings.push_back(std::move(meaning));
  return text_or_nothing(joined(meanings));
}

const char *user_of(const ZoxSetting &setting) noexcept {
  return setting.user == ZOX_SETTING_LIBRARY ? "library" : "front end";
}

/** `values`: those of a setting that may be printed. */
Fields<Setting> setting_fields(std::vector<std::string> (*values)(const ZoxSetting &)) {
  return {
      {{.name = "key", .type = type::text(), .rank = 1}, [](Setting s) -> Value { return s->key; }},
      {{.name = "value", .type = type::texts(), .rank = 1, .flexible = true},
       [values](Setting s) { return values_or_nothing(*s, values(*s)); }},
      {{.name = "meaning", .type = type::text(), .flexible = true},
       [values](Setting s) { return meaning_or_nothing(*s, values(*s)); }},
      {{.name = "description", .type = type::text(), .flexible = true},
       [](Setting s) -> Value { return s->description; }},
      {{.name = "choices", .type = type::text(), .flexible = true},
       [](Setting s) -> Value { return possible_values(*s); }},
      {{.name = "default", .type = type::text(), .flexible = true},
       [](Setting s) -> Value { return default_in_words(*s); }},
      {{.name = "usedBy", .type = type::text()}, [](Setting s) -> Value { return user_of(*s); }},
  };
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
  if (wants_records(context.arguments)) {
    print_record(context, setting_fields(values_of), &setting);
    return Exit::ok;
  }
  for (const std::string &value : values)
    context.out.write(safe_text(explained ? with_meaning(setting, value) : value) + "\n");
  return Exit::ok;
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

void print_explanations(const std::vector<Setting> &settings, Output &out) {
  out.page();
  std::string text;
  for (const ZoxSetting *setting : settings)
    text += safe_text(assignment_in_words(*setting)) + "\n    " + setting->description +
            "\n    Values: " + possible_values(*setting) +
            "; default: " + default_in_words(*setting) + "; used by the " + user_of(*setting) +
            ".\n";
  out.write(text);
}

Exit run_list(const Context &context) {
  const Arguments &arguments = context.arguments;
  const CoreSession session(context.options, Access::read, Load::settings);
  const Fields<Setting> fields = setting_fields(shown_values);
  const bool on_terminal = context.out.width() > 0 && !arguments.has("--no-header");
  if (!wants_records(arguments) && (arguments.has("--explain") || on_terminal))
    print_explanations(arranged(all_settings(), fields, context), context.out);
  else
    print_records(context, fields, all_settings());
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
      with_output(
          {"get",
           "Print a setting; the items of a list one per line",
           {key_argument()},
           {{"--show-secret", "", "Print the setting even if it is a password"},
            explain_option("Print what the value means as well; a terminal always shows it")},
           run_get},
          one_record(setting_fields(shown_values))),
      with_output({"list",
                   "Print all settings; passwords stay hidden",
                   {},
                   {explain_option(
                       "Explain each setting; on a terminal that is the default without --format")},
                   run_list},
                  list_of_records(setting_fields(shown_values), "setting", "settings")),
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
