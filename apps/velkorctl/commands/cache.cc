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
#include "velkorctl/record_printer.h"
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

/** What cache info tells. */
struct Info {
  fs::path directory;
  Contents contents;
};

Value files_of(const Info &info) {
  return file_values(info.directory, present_files(info.directory));
}

Value states_of(const Info &info) {
  Value::List states;
  for (const auto &[state, number] : info.contents.by_state)
    states.emplace_back(Value::Object{state + " " + std::to_string(number),
                                      {{"status", state}, {"count", number}}});
  return states;
}

Fields<Info> info_fields() {
  using I = const Info &;
  return {
      {{.name = "directory", .type = type::text()},
       [](I info) -> Value { return info.directory.string(); }},
      {{.name = "files", .type = files_type()}, files_of},
      {{.name = "lastUpdate", .type = type::moment()},
       [](I /*info*/) { return moment_or_nothing(core->config->lastCheck); }},
      {{.name = "updateBefore", .type = type::moment()},
       [](I /*info*/) { return moment_or_nothing(core->config->prevCheck); }},
      {{.name = "postings", .type = type::number()},
       [](I info) -> Value { return info.contents.postings; }},
      {{.name = "states",
        .type = type::list_of(type::object({{"status", type::text()}, {"count", type::number()}}))},
       states_of},
      {{.name = "oldest", .type = type::moment()},
       [](I info) {
         return info.contents.postings > 0 ? moment_or_nothing(info.contents.oldest) : Value();
       }},
      {{.name = "newest", .type = type::moment()},
       [](I info) {
         return info.contents.postings > 0 ? moment_or_nothing(info.contents.newest) : Value();
       }},
  };
}

Exit run_info(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  print_record(context, info_fields(), {session.directory(), count_postings()});
  return Exit::ok;
}

/** A file with what came of reading it. */
struct Verified {
  std::string name;
  Inspection found;
};

std::string result_of(const Inspection &found) {
  if (!found.superseded_by.empty())
    return "not used: " + found.superseded_by + " is read in its place";
  return found.problem.empty() ? "ok" : found.problem;
}

Fields<Verified> verified_fields() {
  using V = const Verified &;
  return {
      {{.name = "name", .type = type::text(), .rank = 1, .title = "File"},
       [](V file) -> Value { return file.name; }},
      {{.name = "entries", .type = type::number(), .rank = 2},
       [](V file) -> Value { return file.found.entries; }},
      {{.name = "sound", .type = type::flag()},
       [](V file) -> Value { return file.found.problem.empty(); }},
      {{.name = "result", .type = type::text(), .rank = 1, .flexible = true},
       [](V file) -> Value { return result_of(file.found); }},
  };
}

Exit run_verify(const Context &context) {
  const fs::path directory = cache_directory(context.options);
  std::vector<Verified> files;
  for (const CacheFile &file : files_in(directory))
    files.push_back({file.name, inspect(directory, file)});
  const bool sound =
      std::ranges::all_of(files, [](const Verified &file) { return file.found.problem.empty(); });
  const Exit exit = sound ? Exit::ok : Exit::files;
  print_records(context, verified_fields(), files, {.code = exit});
  return exit;
}

Exit run_resync(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::write,
                            Load::postings_if_readable);
  session.require_account();
  require_ageing(context.arguments);
  UpdateRun update(UpdateRun::Extent::everything);
  update.run();
  print_update(context, update.outcome(), Exit::ok);
  return Exit::ok;
}

}  // namespace

std::vector<Command> cache_commands() {
  return {with_output({"info", "Print what the cache holds", {}, {}, run_info},
                      one_record(info_fields())),
          with_output({"verify",
                       "Read every file of the cache as the library does and report damage",
                       {},
                       {},
                       run_verify},
                      list_of_records(verified_fields(), "file", "files")),
          cache_backup_command(), cache_restore_command(),
          with_output(
              {"resync", "Fetch everything from the server again", {}, {yes_option()}, run_resync},
              update_record())};
}

}  // namespace velkor::ctl
