/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl show: one posting with its details and reactions. */
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/details.h"
#include "velkorctl/formats.h"

namespace velkor::ctl {
namespace {

OwnedEvent cached_posting(gint32 id) {
  OwnedEvent posting = find_posting(id);
  if (!posting)
    throw Failure(Exit::not_found, "posting " + std::to_string(id) + " is not in the cache");
  return posting;
}

Exit run(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const OwnedEvent posting = context.arguments.has("--offline")
                                 ? cached_posting(id)
                                 : fetch_posting(session, id, Fetch::details_and_reactions);
  if (!wants_json(context.arguments)) {
    print_details(*posting, context.out);
    print_reactions(*posting, context.out);
    return Exit::ok;
  }
  Json json;
  json.begin_object();
  add_posting(json, *posting);
  add_details(json, *posting);
  add_reactions(json, *posting);
  context.out.write(json.end_object().compact() + "\n");
  return Exit::ok;
}

}  // namespace

Command show_command() {
  return {
      "show",
      "Print a posting with its details and reactions",
      {{"ID", "The number of the posting"}},
      {{"--offline", "", "Only what the cache has, which are the fields of list"}, format_option()},
      run};
}

}  // namespace velkor::ctl
