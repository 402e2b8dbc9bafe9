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
  print_record(context, detail_fields(), *posting);
  if (format_of(context.arguments) == Format::table && !context.arguments.has("--fields"))
    print_reactions(reactions_of(*posting), posting->forum != nullptr && posting->locked != 0,
                    context.out);
  return Exit::ok;
}

}  // namespace

Command show_command() {
  return with_output(
      {"show",
       "Print a posting with its details and reactions",
       {posting_argument()},
       {{"--offline", "", "Ask the server for nothing; print the fields that list has"}},
       run},
      one_record(detail_fields()));
}

}  // namespace velkor::ctl
