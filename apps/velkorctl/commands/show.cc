/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl show: one posting with its details and reactions. */
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/details.h"

namespace velkor::ctl {
namespace {

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
  print(json.end_object(), context);
  return Exit::ok;
}

}  // namespace

Command show_command() {
  return {"show",
          "Print a posting with its details and reactions",
          {posting_argument()},
          {{"--offline", "", "Ask the server for nothing; print the fields that list has"},
           format_option()},
          run};
}

}  // namespace velkor::ctl
