/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl watch: the watchlist, and its copy on the server. */
#include <cstdlib>

#include <velkor/zox_watchlist.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/messages.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

std::vector<gint32> ids_of(const Arguments &arguments) {
  std::vector<gint32> ids;
  for (const std::string &text : arguments.values("ID"))
    ids.push_back(posting_id(text));
  return ids;
}

Exit run_add(const Context &context) {
  const std::vector<gint32> ids = ids_of(context.arguments);
  CoreSession session(context.options, Access::write, Load::settings);
  for (const gint32 id : ids)
    if (zox_watchlist_add(id) == 0)
      say("posting " + std::to_string(id) + " is already on the watchlist");
  session.save_settings();
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
  zox_watchlist_clear();
  session.save_settings();
  return Exit::ok;
}

std::vector<gint32> watched_ids() {
  std::vector<gint32> ids;
  for (const GString *text : Items<GString>(zox_watchlist_get()))
    ids.push_back(std::atoi(text->str));
  return ids;
}

void print_table(const Context &context) {
  Table table(posting_columns());
  for (const gint32 id : watched_ids()) {
    const OwnedEvent posting = find_posting(id);
    table.add(posting ? posting_row(*posting) : std::vector<std::string>{std::to_string(id)});
  }
  print(table, context);
}

void print_json(Output &out) {
  JsonLines lines(out);
  for (const gint32 id : watched_ids()) {
    const OwnedEvent posting = find_posting(id);
    Json json;
    json.begin_object();
    if (posting)
      add_posting(json, *posting);
    else
      json.number("id", id);
    lines.add(json.end_object());
  }
  lines.finish();
}

Exit run_list(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::postings);
  if (wants_json(context.arguments))
    print_json(context.out);
  else
    print_table(context);
  return Exit::ok;
}

Exit run_upload(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::settings);
  session.require_account();
  char *place = nullptr;
  const ZoxErrorCode result = zox_watchlist_upload(&place);
  require_success(result, OwnedText(place));
  return Exit::ok;
}

Exit run_download(const Context &context) {
  CoreSession session(context.options, Access::write, Load::postings);
  session.require_account();
  char *place = nullptr;
  const ZoxErrorCode result = zox_watchlist_download(&place);
  require_success(result, OwnedText(place));
  session.save_settings();
  return Exit::ok;
}

}  // namespace

Command watch_add_command() {
  return {"watch add",
          "Put postings on the watchlist",
          {{"ID", "The numbers of the postings", Argument::Count::some}},
          {},
          run_add};
}

Command watch_remove_command() {
  return {"watch remove",
          "Take postings off the watchlist",
          {{"ID", "The numbers of the postings", Argument::Count::some}},
          {},
          run_remove};
}

Command watch_list_command() {
  return {"watch list", "Print the watchlist", {}, with_format_options({}), run_list};
}

Command watch_clear_command() {
  return {"watch clear", "Take everything off the watchlist", {}, {}, run_clear};
}

Command watch_upload_command() {
  return {"watch upload", "Replace the watchlist on the server by this one", {}, {}, run_upload};
}

Command watch_download_command() {
  return {"watch download", "Add the watchlist on the server to this one", {}, {}, run_download};
}

}  // namespace velkor::ctl
