/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl watchers: texts that are looked for in the titles of new postings. */
#include <algorithm>

#include <velkor/zox_app_core.h>
#include <velkor/zox_watcher.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/postings.h"
#include "velkorctl/setting_lists.h"
#include "velkorctl/settings.h"

namespace velkor::ctl {
namespace {

constexpr const char *key = "watcher";

Exit run_add(const Context &context) {
  return add_to_setting(context, key);
}

Exit run_remove(const Context &context) {
  return remove_from_setting(context, key);
}

Exit run_list(const Context &context) {
  return print_setting(context, key);
}

struct Match {
  gint64 stamp;
  gint32 id;
};

gint collect(ZoxEvent *posting, const char * /*text*/, gpointer matches) noexcept {
  static_cast<std::vector<Match> *>(matches)->push_back({posting->stamp, posting->postId});
  return 0;
}

/** The postings that a watcher matches, the newest first. */
std::vector<gint32> matches_of(const std::string &text) {
  std::vector<Match> matches;
  zox_watcher_foreach(text.c_str(), collect, &matches);
  std::sort(matches.begin(), matches.end(), [](const Match &left, const Match &right) {
    return std::pair(left.stamp, left.id) > std::pair(right.stamp, right.id);
  });
  std::vector<gint32> ids;
  for (const Match &match : matches)
    ids.push_back(match.id);
  return ids;
}

void print_table(const std::vector<std::string> &watchers, const Context &context) {
  std::vector<Column> columns{{"WATCHER", Column::Align::left, true}};
  for (const Column &column : posting_columns())
    columns.push_back(column);
  Table table(columns);
  for (const std::string &text : watchers)
    for (const gint32 id : matches_of(text))
      if (const OwnedEvent posting = find_posting(id)) {
        std::vector<std::string> row{text};
        for (const std::string &cell : posting_row(*posting))
          row.push_back(cell);
        table.add(row);
      }
  print(table, context);
}

void print_json(const std::vector<std::string> &watchers, Output &out) {
  JsonLines lines(out);
  for (const std::string &text : watchers)
    for (const gint32 id : matches_of(text))
      if (const OwnedEvent posting = find_posting(id)) {
        Json json;
        json.begin_object().text("watcher", text);
        add_posting(json, *posting);
        lines.add(json.end_object());
      }
  lines.finish();
}

Exit run_run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  std::vector<std::string> watchers = context.arguments.values("TEXT");
  if (watchers.empty())
    watchers = values_of(setting_called(key), *core->config);
  if (wants_json(context.arguments))
    print_json(watchers, context.out);
  else
    print_table(watchers, context);
  return Exit::ok;
}

}  // namespace

Command watchers_add_command() {
  return {"watchers add",
          "Look for texts in the titles of new postings",
          {{"TEXT", "What to look for", Argument::Count::some}},
          {},
          run_add};
}

Command watchers_remove_command() {
  return {"watchers remove",
          "Look for texts no longer",
          {{"TEXT", "What was looked for", Argument::Count::some}},
          {},
          run_remove};
}

Command watchers_list_command() {
  return {"watchers list", "Print the watchers, one a line", {}, {format_option()}, run_list};
}

Command watchers_run_command() {
  return {"watchers run",
          "Print the cached postings that the watchers match",
          {{"TEXT", "Only what these texts match, watchers or not", Argument::Count::any}},
          with_format_options({}),
          run_run};
}

}  // namespace velkor::ctl
