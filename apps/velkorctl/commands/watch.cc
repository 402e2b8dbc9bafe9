/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl watch: the watchlist, and its copy on the server. */
#include <vector>

#include <velkor/zox_watchlist.h>

#include "support/numbers.h"
#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/consent.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

std::vector<gint32> ids_of(const Arguments &arguments) {
  const std::vector<std::string> texts = arguments.values("ID");
  std::vector<gint32> ids;
  ids.reserve(texts.size());
  for (const std::string &text : texts)
    ids.push_back(posting_id(text));
  return ids;
}

/** A posting that is put on the watchlist. */
struct Watched {
  gint32 id = 0;
  /** Whether it was not there yet. */
  bool added = false;
  bool cached = false;
};

Fields<Watched> watched_fields() {
  using W = const Watched &;
  return {{{.name = "id", .type = type::number(), .rank = 1},
           [](W watched) -> Value { return watched.id; }},
          {{.name = "added", .type = type::flag(), .rank = 1},
           [](W watched) -> Value { return watched.added; }},
          {{.name = "cached", .type = type::flag(), .rank = 1, .title = "In the cache"},
           [](W watched) -> Value { return watched.cached; }}};
}

Watched watch(gint32 id) {
  const bool added = zox_watchlist_add(id) != 0;
  return {id, added, find_posting(id) != nullptr};
}

void tell(const Watched &watched) {
  const std::string posting = "posting " + std::to_string(watched.id);
  if (!watched.added)
    say(posting + " is already on the watchlist");
  else if (!watched.cached)
    say(posting + " is on the watchlist now, but not in the cache");
}

Exit run_add(const Context &context) {
  const std::vector<gint32> ids = ids_of(context.arguments);
  CoreSession session(context.options, Access::write, Load::postings_if_readable);
  std::vector<Watched> all;
  all.reserve(ids.size());
  for (const gint32 id : ids)
    tell(all.emplace_back(watch(id)));
  session.save_settings();
  if (wants_records(context.arguments))
    print_records(context, watched_fields(), all);
  return Exit::ok;
}

Exit run_remove(const Context &context) {
  const std::vector<gint32> ids = ids_of(context.arguments);
  CoreSession session(context.options, Access::write, Load::settings);
  for (const gint32 id : ids)
    if (zox_watchlist_remove(id) == 0)
      throw Failure(Exit::not_found, "posting " + std::to_string(id) + " is not on the watchlist");
  session.save_settings();
  return Exit::ok;
}

Exit run_clear(const Context &context) {
  CoreSession session(context.options, Access::write, Load::settings);
  constexpr guint a_few = 10;
  if (const guint count = g_slist_length(zox_watchlist_get()); count > a_few)
    require_consent(context.arguments,
                    "all " + std::to_string(count) + " postings would be taken off the watchlist");
  zox_watchlist_clear();
  session.save_settings();
  return Exit::ok;
}

std::vector<gint32> watched_ids() {
  std::vector<gint32> ids;
  for (const GString *text : Items<GString>(zox_watchlist_get()))
    ids.push_back(static_cast<gint32>(leading_number(text->str)));
  return ids;
}

Exit run_list(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::postings);
  print_postings_arranged(watched_ids(), context);
  return Exit::ok;
}

Exit run_upload(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::settings);
  session.require_account();
  call("sending the watchlist", zox_watchlist_upload);
  return Exit::ok;
}

Exit run_download(const Context &context) {
  CoreSession session(context.options, Access::write, Load::postings);
  session.require_account();
  call("fetching the watchlist", zox_watchlist_download);
  session.save_settings();
  return Exit::ok;
}

}  // namespace

std::vector<Command> watch_commands() {
  return {
      with_output({"add", "Add postings to the watchlist", {postings_argument()}, {}, run_add},
                  list_of_records(watched_fields(), "posting", "postings")),
      {"remove", "Remove postings from the watchlist", {postings_argument()}, {}, run_remove},
      with_output({"list", "Print the watchlist", {}, {}, run_list}, posting_records()),
      {"clear", "Remove all postings from the watchlist", {}, {yes_option()}, run_clear},
      {"upload", "Replace the watchlist on the server with this one", {}, {}, run_upload},
      {"download", "Add the postings of the server's watchlist to this one", {}, {}, run_download},
  };
}

}  // namespace velkor::ctl
