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

Exit run_add(const Context &context) {
  const std::vector<gint32> ids = ids_of(context.arguments);
  CoreSession session(context.options, Access::write, Load::postings_if_readable);
  for (const gint32 id : ids) {
    const std::string posting = "posting " + std::to_string(id);
    if (zox_watchlist_add(id) == 0)
      say(posting + " is already on the watchlist");
    else if (!find_posting(id))
      say(posting + " is on the watchlist now, but not in the cache");
  }
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
      {"add", "Add postings to the watchlist", {postings_argument()}, {}, run_add},
      {"remove", "Remove postings from the watchlist", {postings_argument()}, {}, run_remove},
      with_output({"list", "Print the watchlist", {}, {}, run_list}, posting_records()),
      {"clear", "Remove all postings from the watchlist", {}, {yes_option()}, run_clear},
      {"upload", "Replace the watchlist on the server with this one", {}, {}, run_upload},
      {"download", "Add the postings of the server's watchlist to this one", {}, {}, run_download},
  };
}

}  // namespace velkor::ctl
