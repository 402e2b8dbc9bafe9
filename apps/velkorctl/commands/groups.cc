/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl groups: the newsgroups in the cache, fetched first with --fetch. */
#include <velkor/zox_groups.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

Fields<const ZoxGroup *> fields() {
  using G = const ZoxGroup *;
  return {
      {{.name = "id", .type = type::number(), .rank = 2},
       [](G group) -> Value { return group->id; }},
      {{.name = "name", .type = type::text(), .rank = 1, .flexible = true, .title = "Newsgroup"},
       [](G group) -> Value { return group->groupName; }},
      {{.name = "shortName", .type = type::text()},
       [](G group) -> Value { return newsgroup_name(group->id); }},
  };
}

std::vector<const ZoxGroup *> all_groups() {
  const Items<ZoxGroup> groups(zox_groups_get());
  return {groups.begin(), groups.end()};
}

void fetch(const CoreSession &session) {
  session.require_account();
  call("fetching the newsgroups", [](char ** /*server_text*/) { return zox_group_fetch(); });
  if (const ZoxFileError *outcome = zox_file_last_error(); outcome->status != ZOX_FILE_FINE)
    throw Failure(Exit::files,
                  std::string("the newsgroups could not be saved: ") + outcome->message);
}

Exit run(const Context &context) {
  using Access = CoreSession::Access;
  const bool fetching = context.arguments.has("--fetch");
  const CoreSession session(context.options, fetching ? Access::write : Access::read,
                            Load::settings);
  if (fetching)
    fetch(session);
  print_records(context, fields(), all_groups());
  return Exit::ok;
}

}  // namespace

Command groups_command() {
  return with_output({"groups",
                      "Print the newsgroups in the cache",
                      {},
                      {{"--fetch", "", "Fetch the newsgroups from the server first"}},
                      run},
                     list_of_records(fields(), "newsgroup", "newsgroups"));
}

}  // namespace velkor::ctl
