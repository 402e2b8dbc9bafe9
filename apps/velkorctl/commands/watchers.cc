/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl watchers: texts that are looked for in the titles of new postings. */
#include <algorithm>
#include <functional>
#include <iterator>

#include <velkor/zox_watcher.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/postings.h"
#include "velkorctl/setting_lists.h"

namespace velkor::ctl {
namespace {

const SettingList &watcher_list() {
  static const SettingList list{"watcher", "The texts",
                                "Look for texts in the titles of new postings",
                                "Stop looking for texts", "Print the watchers, one per line"};
  return list;
}

struct Match {
  std::string text;
  gint64 stamp;
  gint32 id;
};

gint collect(ZoxEvent *posting, const char *text, gpointer matches) noexcept {
  static_cast<std::vector<Match> *>(matches)->push_back({text, posting->stamp, posting->postId});
  return 0;
}

/** The postings that the watchers match; those of each watcher with the newest first. */
std::vector<Match> matches_of(const std::vector<std::string> &watchers) {
  std::vector<Match> all;
  for (const std::string &text : watchers) {
    std::vector<Match> matches;
    zox_watcher_foreach(text.c_str(), collect, &matches);
    std::ranges::sort(matches, std::ranges::greater(),
                      [](const Match &match) { return std::pair(match.stamp, match.id); });
    all.insert(all.end(), matches.begin(), matches.end());
  }
  return all;
}

std::vector<Column> columns() {
  std::vector<Column> columns{{"WATCHER", Column::Align::left, true}};
  std::ranges::copy(posting_columns(), std::back_inserter(columns));
  return columns;
}

Exit run_run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  std::vector<std::string> watchers = context.arguments.values("TEXT");
  if (watchers.empty())
    watchers = texts_of(watcher_list());
  const auto row = [](const Match &match) {
    std::vector<std::string> cells{match.text};
    std::ranges::copy(posting_row(*cached_posting(match.id)), std::back_inserter(cells));
    return cells;
  };
  const auto add_members = [](Json &json, const Match &match) {
    json.member("watcher", match.text);
    add_posting(json, *cached_posting(match.id));
  };
  print_list(context, columns(), matches_of(watchers), row, add_members);
  return Exit::ok;
}

}  // namespace

std::vector<Command> watchers_commands() {
  std::vector<Command> commands = setting_list_commands(watcher_list());
  commands.push_back({"run",
                      "Print the cached postings that the watchers match",
                      {{"TEXT", "Use these texts instead of the watchers", Argument::Count::any}},
                      with_format_options({}),
                      run_run});
  return commands;
}

}  // namespace velkor::ctl
