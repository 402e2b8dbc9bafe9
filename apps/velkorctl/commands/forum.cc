/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl forum: prints the reactions to a posting, or sends one. */
#include <velkor/zox_events_forum.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/details.h"
#include "velkorctl/messages.h"
#include "velkorctl/text_input.h"

namespace velkor::ctl {
namespace {

void send_reaction(const Context &context, gint32 id, const std::string &file) {
  const std::string text = read_text(file);
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  call("sending the reaction", zox_events_forum_post, text.c_str(), id, 0);
  say("the reaction has been sent");
}

using Reactions = std::vector<const ZoxReactie *>;

Fields<const ZoxReactie *> fields() {
  return fields_of_part<const ZoxReactie *, ZoxReactie>(
      reaction_fields(), [](const ZoxReactie *reaction) { return reaction; });
}

void print_forum(const Context &context, gint32 id) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const OwnedEvent posting = fetch_posting(session, id, Fetch::reactions);
  const Reactions reactions = reactions_of(*posting);
  const bool locked = posting->locked != 0;
  if (wants_records(context.arguments)) {
    print_records(
        context, fields(), reactions,
        {.code = Exit::ok, .message = "", .facts = {{"posting", id}, {"locked", locked}}});
    return;
  }
  context.out.page();
  print_reactions(arranged(reactions, fields(), context), locked, context.out);
}

Exit run(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  if (const auto file = context.arguments.value("--reply"))
    send_reaction(context, id, *file);
  else
    print_forum(context, id);
  return Exit::ok;
}

}  // namespace

Command forum_command() {
  RecordInfo record = list_of_records(reaction_fields(), "reaction", "reactions");
  record.facts = {{.name = "posting", .type = type::number()},
                  {.name = "locked", .type = type::flag()}};
  return with_output(
      {"forum",
       "Print the reactions to a posting, or send one",
       {posting_argument()},
       {{"--reply", "FILE", "Send the text of FILE as a reaction (- for standard input)"}},
       run},
      std::move(record));
}

}  // namespace velkor::ctl
