/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl badwords: words; a posting with one of them in its title is dropped. */
#include <cstring>

#include <velkor/zox_string.h>

#include "support/owned.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/setting_lists.h"

namespace velkor::ctl {
namespace {

const SettingList &bad_words() {
  static const SettingList list{"badword", "The words", "Drop postings with a word in their title",
                                "Stop dropping postings with a word in their title",
                                "Print the bad words, one per line"};
  return list;
}

/** As the library looks for a word: anywhere, ignoring the case of ASCII letters only. */
bool occurs(const std::string &word, const std::string &title) {
  const OwnedText upper_title(zox_string_upcase(title.c_str()));
  const OwnedText upper_word(zox_string_upcase(word.c_str()));
  return std::strstr(upper_title.get(), upper_word.get()) != nullptr;
}

Exit run_test(const Context &context) {
  const std::string title = context.arguments.required("TITLE");
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  Exit exit = Exit::not_found;
  for (const std::string &word : texts_of(bad_words()))
    if (occurs(word, title)) {
      context.out.write(safe_text(word) + "\n");
      exit = Exit::ok;
    }
  return exit;
}

}  // namespace

std::vector<Command> badwords_commands() {
  std::vector<Command> commands = setting_list_commands(bad_words());
  commands.push_back({"test",
                      "Print the bad words that a title contains",
                      {{"TITLE", "The title"}},
                      {},
                      run_test});
  return commands;
}

}  // namespace velkor::ctl
