/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl badwords: words whose postings are dropped when they are read. */
#include <cstring>

#include <velkor/zox_app_core.h>
#include <velkor/zox_string.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/setting_lists.h"
#include "velkorctl/settings.h"

namespace velkor::ctl {
namespace {

constexpr const char *key = "badword";

Exit run_add(const Context &context) {
  return add_to_setting(context, key);
}

Exit run_remove(const Context &context) {
  return remove_from_setting(context, key);
}

Exit run_list(const Context &context) {
  return print_setting(context, key);
}

/** As the reader of postings looks for it: anywhere, only ASCII letters regardless of case. */
bool occurs(const std::string &word, const std::string &title) {
  const OwnedText upper_title(zox_string_upcase(title.c_str()));
  const OwnedText upper_word(zox_string_upcase(word.c_str()));
  return std::strstr(upper_title.get(), upper_word.get()) != nullptr;
}

Exit run_test(const Context &context) {
  const std::string title = context.arguments.required("TITLE");
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  Exit exit = Exit::not_found;
  for (const std::string &word : values_of(setting_called(key), *core->config))
    if (occurs(word, title)) {
      context.out.write(safe_text(word) + "\n");
      exit = Exit::ok;
    }
  return exit;
}

}  // namespace

Command badwords_add_command() {
  return {"badwords add",
          "Drop postings whose title contains a word",
          {{"TEXT", "The words", Argument::Count::some}},
          {},
          run_add};
}

Command badwords_remove_command() {
  return {"badwords remove",
          "Drop postings with a word no longer",
          {{"TEXT", "The words", Argument::Count::some}},
          {},
          run_remove};
}

Command badwords_list_command() {
  return {"badwords list", "Print the bad words, one a line", {}, {format_option()}, run_list};
}

Command badwords_test_command() {
  return {"badwords test",
          "Print the bad words that a title contains",
          {{"TITLE", "The title"}},
          {},
          run_test};
}

}  // namespace velkor::ctl
