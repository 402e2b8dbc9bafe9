/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl cache: what the cache directory holds, and fetching it again. */
#include <algorithm>
#include <map>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>

#include "velkorctl/cache_files.h"
#include "velkorctl/commands.h"
#include "velkorctl/consent.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/moment.h"
#include "velkorctl/progress.h"
#include "velkorctl/update_run.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

struct Contents {
  std::int64_t postings = 0;
  gint64 oldest = G_MAXINT64;
  gint64 newest = G_MININT64;
  std::map<std::string, std::int64_t> by_state;
};

void count(const ZoxEvent *posting, gpointer data) noexcept {
  auto &contents = *static_cast<Contents *>(data);
  ++contents.postings;
  contents.oldest = std::min(contents.oldest, posting->stamp);
  contents.newest = std::max(contents.newest, posting->stamp);
  ++contents.by_state[zox_string_status(posting->status)];
}

Contents count_postings() {
  Contents contents;
  zox_eventlist_visit(core->eventlist, 0, count, &contents);
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
  table.add({"Update before", moment_or_never(core->config->prevCheck)});
  table.add({"Postings", std::to_string(contents.postings)});
  for (const auto &[state, number] : contents.by_state)
    table.add({"  " + state, std::to_string(number)});
  if (contents.postings > 0) {
    table.add({"Oldest", show_moment(contents.oldest)});
    table.add({"Newest", show_moment(contents.newest)});
  }
  out.write(table.text(0, false));
}

void print_info_json(const CoreSession &session, const Contents &contents, const Context &context) {
  Json json;
  json.begin_object().member("directory", session.directory().string()).begin_object("files");
  for (const CacheFile &file : present_files(session.directory()))
    json.member(file.name.c_str(), size_of(session.directory() / file.name));
  json.end_object().member("lastCheck", core->config->lastCheck);
  json.member("prevCheck", core->config->prevCheck).member("postings", contents.postings);
  json.begin_object("states");
  for (const auto &[state, number] : contents.by_state)
    json.member(state.c_str(), number);
  json.end_object();
  if (contents.postings > 0)
    json.member("oldest", contents.oldest).member("newest", contents.newest);
  print(json.end_object(), context);
}

Exit run_info(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const Contents contents = count_postings();
  if (wants_json(context.arguments))
    print_info_json(session, contents, context);
  else
    print_info(session, contents, context.out);
  return Exit::ok;
}

std::string result_of(const Inspection &found) {
  if (!found.superseded_by.empty())
    return "not used: " + found.superseded_by + " is read in its place";
  return found.problem.empty() ? "ok" : found.problem;
}

Exit run_verify(const Context &context) {
  const fs::path directory = cache_directory(context.options);
  const std::vector<CacheFile> files = files_in(directory);
  Table table({{"FILE"}, {"ENTRIES", Column::Align::right}, {"RESULT", Column::Align::left, true}});
  bool sound = true;
  for (const CacheFile &file : files) {
    const Inspection found = inspect(directory, file);
    sound = sound && found.problem.empty();
    table.add({file.name, std::to_string(found.entries), result_of(found)});
  }
  print(table, context);
  return sound ? Exit::ok : Exit::files;
}

Exit run_resync(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::write,
                            Load::postings_if_readable);
  session.require_account();
  require_ageing(context.arguments);
  UpdateRun(UpdateRun::Extent::everything).run();
  return Exit::ok;
}

}  // namespace

std::vector<Command> cache_commands() {
  return {{"info", "Print what the cache holds", {}, {format_option()}, run_info},
          {"verify",
           "Read every file of the cache as the library does and report damage",
           {},
           {no_header_option()},
           run_verify},
          cache_backup_command(),
          cache_restore_command(),
          {"resync", "Fetch everything from the server again", {}, {yes_option()}, run_resync}};
}

}  // namespace velkor::ctl
