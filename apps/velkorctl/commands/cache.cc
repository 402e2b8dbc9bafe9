/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl cache info and verify: what the cache directory holds. */
#include <algorithm>
#include <map>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>

#include "velkorctl/cache_files.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/json.h"
#include "velkorctl/moment.h"
#include "velkorctl/progress.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

struct Contents {
  std::int64_t postings = 0;
  gint64 oldest = G_MAXINT64;
  gint64 newest = G_MININT64;
  std::map<std::string, std::int64_t> by_state;
};

gint count(gpointer /*key*/, ZoxEvent *posting, gpointer data) noexcept {
  auto &contents = *static_cast<Contents *>(data);
  ++contents.postings;
  contents.oldest = std::min(contents.oldest, posting->stamp);
  contents.newest = std::max(contents.newest, posting->stamp);
  ++contents.by_state[zox_string_status(posting->status)];
  return 0;
}

Contents count_postings() {
  Contents contents;
  zox_eventlist_foreach(core->eventlist, 0, 1, count, &contents);
  return contents;
}

std::string moment_or_never(gint64 seconds) {
  return seconds == 0 ? "never" : show_moment(seconds);
}

std::int64_t size_of(const fs::path &path) {
  std::error_code error;
  const auto size = fs::file_size(path, error);
  return error ? 0 : static_cast<std::int64_t>(size);
}

void print_info(const CoreSession &session, const Contents &contents, Output &out) {
  Table table({{""}, {""}});
  table.add({"Directory", session.directory().string()});
  for (const CacheFile &file : present_files(session.directory()))
    table.add({file.name, show_bytes(size_of(session.directory() / file.name))});
  table.add({"Last update", moment_or_never(core->config->lastCheck)});
  table.add({"The one before", moment_or_never(core->config->prevCheck)});
  table.add({"Postings", std::to_string(contents.postings)});
  for (const auto &[state, number] : contents.by_state)
    table.add({"  " + state, std::to_string(number)});
  if (contents.postings > 0) {
    table.add({"Oldest", show_moment(contents.oldest)});
    table.add({"Newest", show_moment(contents.newest)});
  }
  out.write(table.text(0, false));
}

void print_info_json(const CoreSession &session, const Contents &contents, Output &out) {
  Json json;
  json.begin_object().text("directory", session.directory().string()).begin_object("files");
  for (const CacheFile &file : present_files(session.directory()))
    json.number(file.name.c_str(), size_of(session.directory() / file.name));
  json.end_object().number("lastCheck", core->config->lastCheck);
  json.number("prevCheck", core->config->prevCheck).number("postings", contents.postings);
  json.begin_object("states");
  for (const auto &[state, number] : contents.by_state)
    json.number(state.c_str(), number);
  json.end_object();
  if (contents.postings > 0)
    json.number("oldest", contents.oldest).number("newest", contents.newest);
  out.write(json.end_object().compact() + "\n");
}

Exit run_info(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const Contents contents = count_postings();
  if (wants_json(context.arguments))
    print_info_json(session, contents, context.out);
  else
    print_info(session, contents, context.out);
  return Exit::ok;
}

Exit run_verify(const Context &context) {
  const fs::path directory = cache_directory(context.options);
  Table table({{"FILE"}, {"ENTRIES", Column::Align::right}, {"RESULT", Column::Align::left, true}});
  bool sound = true;
  for (const CacheFile &file : present_files(directory)) {
    const Inspection inspection = inspect(directory, file);
    sound = sound && inspection.problem.empty();
    table.add({file.name, std::to_string(inspection.entries),
               inspection.problem.empty() ? "ok" : inspection.problem});
  }
  print(table, context);
  return sound ? Exit::ok : Exit::files;
}

}  // namespace

Command cache_info_command() {
  return {"cache info", "Print what the cache holds", {}, {format_option()}, run_info};
}

Command cache_verify_command() {
  return {"cache verify",
          "Read every file of the cache to its end and tell which are damaged",
          {},
          {{"--no-header", "", "Leave the titles of the columns out"}},
          run_verify};
}

}  // namespace velkor::ctl
