/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl watchers: texts that are looked for in the titles of new postings. */
#include <algorithm>
#include <functional>

#include <velkor/zox_watcher.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/setting_lists.h"
#include "velkorctl/watcher_hits.h"

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

WatcherHit hit_of(const Match &match) {
  return {match.text, cached_posting(match.id)};
}

void print_matches(std::vector<Match> matches, const Context &context) {
  const Fields<WatcherHit> all = hit_fields();
  const Order order = order_of(context.arguments);
  arrange_by(matches, order, [&](const Match &match) {
    return field_named(all, *order.sort).value(hit_of(match));
  });
  RecordPrinter<WatcherHit> printer(context, all);
  for (const Match &match : matches)
    printer.add(hit_of(match));
  printer.finish();
}

Exit run_run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  std::vector<std::string> watchers = context.arguments.values("TEXT");
  if (watchers.empty())
    watchers = texts_of(watcher_list());
  print_matches(matches_of(watchers), context);
  return Exit::ok;
}

}  // namespace

std::vector<Command> watchers_commands() {
  std::vector<Command> commands = setting_list_commands(watcher_list());
  commands.push_back(
      with_output({"run",
                   "Print the cached postings that the watchers match",
                   {{"TEXT", "Use these texts instead of the watchers", Argument::Count::any}},
                   {},
                   run_run},
                  list_of_records(hit_fields(), "match", "matches")));
  return commands;
}

}  // namespace velkor::ctl
