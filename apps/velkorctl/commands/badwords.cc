/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl badwords: words; a posting with one of them in its title is dropped. */
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_codes.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>

#include "support/owned.h"
#include "velkorctl/commands.h"
#include "velkorctl/consent.h"
#include "velkorctl/core_session.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/setting_lists.h"

namespace velkor::ctl {
namespace {

const SettingList &bad_words() {
  static const SettingList list{"badword", "The words", "Drop postings with a word in their title",
                                "Stop dropping postings with a word in their title",
                                "Print the bad words, one per line"};
  return list;
}

std::string in_capitals(const std::string &text) {
  return OwnedText(zox_string_upcase(text.c_str())).get();
}

/** As the library looks for a word: anywhere, ignoring the case of ASCII letters only. */
bool occurs(const std::string &word, const std::string &title) {
  return in_capitals(title).find(in_capitals(word)) != std::string::npos;
}

/** The cached postings that words would drop. */
struct Dropped {
  std::vector<std::string> words_in_capitals;
  std::int64_t postings = 0;
};

/** Deleted postings are kept whatever their titles hold. */
void look_at(const ZoxEvent *posting, gpointer data) noexcept {
  auto &dropped = *static_cast<Dropped *>(data);
  if (posting->status == ZOX_STATUS_DELETED || posting->status == ZOX_STATUS_REMOVED)
    return;
  const std::string title = in_capitals(zox_string_value(posting->title));
  if (std::ranges::any_of(dropped.words_in_capitals, [&title](const std::string &word) {
        return title.find(word) != std::string::npos;
      }))
    ++dropped.postings;
}

std::int64_t postings_with(const std::vector<std::string> &words) {
  Dropped dropped;
  std::ranges::transform(words, std::back_inserter(dropped.words_in_capitals), in_capitals);
  zox_eventlist_visit(core->eventlist, 0, look_at, &dropped);
  return dropped.postings;
}

std::string consequence(std::int64_t postings) {
  return std::to_string(postings) +
         (postings == 1 ? " cached posting has such a word in its title and would be dropped"
                        : " cached postings have such a word in their title and would be dropped");
}

/** What becomes of adding words. */
struct Addition {
  std::vector<std::string> texts;
  std::int64_t postings = 0;
  bool dry_run = false;
};

Fields<Addition> addition_fields() {
  using A = const Addition &;
  return {{{.name = "texts", .type = type::list_of(type::text())},
           [](A addition) -> Value {
             return Value::List(addition.texts.begin(), addition.texts.end());
           }},
          {{.name = "dropped", .type = type::number()},
           [](A addition) -> Value { return addition.postings; }},
          {{.name = "dryRun", .type = type::flag()},
           [](A addition) -> Value { return addition.dry_run; }}};
}

void print_addition(const Context &context, const Addition &addition) {
  if (wants_records(context.arguments))
    print_record(context, addition_fields(), addition);
  else if (addition.dry_run)
    context.out.write(consequence(addition.postings) + "\n");
}

Exit run_add(const Context &context) {
  using Access = CoreSession::Access;
  const std::vector<std::string> words = context.arguments.values("TEXT");
  const bool dry_run = context.arguments.has("--dry-run");
  CoreSession session(context.options, dry_run ? Access::read : Access::write,
                      Load::postings_if_readable);
  const std::int64_t postings = postings_with(words);
  if (!dry_run) {
    if (postings > 0)
      require_consent(context.arguments, consequence(postings));
    add_texts(bad_words(), words);
    session.save_settings();
  }
  print_addition(context, {words, postings, dry_run});
  return Exit::ok;
}

Exit run_test(const Context &context) {
  const std::string title = context.arguments.required("TITLE");
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  std::vector<std::string> found;
  std::ranges::copy_if(texts_of(bad_words()), std::back_inserter(found),
                       [&title](const std::string &word) { return occurs(word, title); });
  const Exit exit = found.empty() ? Exit::not_found : Exit::ok;
  print_texts(context, found, {.code = exit});
  return exit;
}

}  // namespace

std::vector<Command> badwords_commands() {
  std::vector<Command> commands = setting_list_commands(bad_words());
  Command &add = commands.front();
  add.options = {{"--dry-run", "", "Print how many cached postings would be dropped"},
                 yes_option()};
  add.run = run_add;
  add = with_output(std::move(add), one_record(addition_fields()));
  commands.push_back(with_output(
      {"test", "Print the bad words that a title contains", {{"TITLE", "The title"}}, {}, run_test},
      text_records()));
  return commands;
}

}  // namespace velkor::ctl
