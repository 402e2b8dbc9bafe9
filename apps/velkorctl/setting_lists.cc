/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/setting_lists.h"

#include <algorithm>

#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/settings.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;
using Texts = std::vector<std::string>;

Fields<std::string> text_fields() {
  return {{{.name = "text", .type = type::text(), .rank = 1, .flexible = true},
           [](const std::string &text) -> Value { return text; }}};
}

/** Lets `change` act on the texts of the setting for every argument, and saves them. */
Exit change_texts(const Context &context, const std::string &key,
                  void (*change)(Texts &texts, const std::string &argument)) {
  const ZoxSetting &setting = setting_called(key);
  CoreSession session(context.options, Access::write, Load::settings);
  Texts texts = values_of(setting);
  for (const std::string &argument : context.arguments.values("TEXT"))
    change(texts, argument);
  assign(setting, texts);
  session.save_settings();
  return Exit::ok;
}

void add(Texts &texts, const std::string &argument) {
  if (std::ranges::find(texts, argument) == texts.end())
    texts.push_back(argument);
  else
    say("\"" + argument + "\" is already in the list");
}

void remove(Texts &texts, const std::string &argument) {
  if (std::erase(texts, argument) == 0)
    throw Failure(Exit::not_found, "\"" + argument + "\" is not in the list");
}

Exit print_list(const Context &context, const SettingList &list) {
  const CoreSession session(context.options, Access::read, Load::settings);
  print_texts(context, texts_of(list));
  return Exit::ok;
}

}  // namespace

std::vector<Command> setting_list_commands(const SettingList &list) {
  const Argument texts{"TEXT", list.texts_help, Argument::Count::some};
  const std::string key = list.key;
  return {{"add",
           list.add_summary,
           {texts},
           {},
           [key](const Context &context) { return change_texts(context, key, add); }},
          {"remove",
           list.remove_summary,
           {texts},
           {},
           [key](const Context &context) { return change_texts(context, key, remove); }},
          with_output({"list",
                       list.list_summary,
                       {},
                       {},
                       [list](const Context &context) { return print_list(context, list); }},
                      text_records())};
}

RecordInfo text_records() {
  return list_of_records(text_fields(), "text", "texts");
}

void print_texts(const Context &context, const std::vector<std::string> &texts,
                 const Result &result) {
  if (wants_records(context.arguments))
    return print_records(context, text_fields(), texts, result);
  for (const std::string &text : arranged(texts, text_fields(), context))
    context.out.write(safe_text(text) + "\n");
}

void add_texts(const SettingList &list, const std::vector<std::string> &added) {
  Texts texts = texts_of(list);
  for (const std::string &text : added)
    add(texts, text);
  assign(setting_called(list.key), texts);
}

std::vector<std::string> texts_of(const SettingList &list) {
  return values_of(setting_called(list.key));
}

}  // namespace velkor::ctl
