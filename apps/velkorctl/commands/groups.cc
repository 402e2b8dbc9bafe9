/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl groups: the newsgroups in the cache, fetched first with --fetch. */
#include <velkor/zox_groups.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"

namespace velkor::ctl {
namespace {

void print_groups(const Context &context) {
  const auto row = [](const ZoxGroup *group) -> std::vector<std::string> {
    return {std::to_string(group->id), std::string(view_of(group->groupName))};
  };
  const auto add_members = [](Json &json, const ZoxGroup *group) {
    json.member("id", group->id).member("name", group->groupName);
  };
  print_list(context, {{"ID", Column::Align::right}, {"NEWSGROUP", Column::Align::left, true}},
             Items<ZoxGroup>(zox_groups_get()), row, add_members);
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
  print_groups(context);
  return Exit::ok;
}

}  // namespace

Command groups_command() {
  return {"groups",
          "Print the newsgroups in the cache",
          {},
          with_format_options({{"--fetch", "", "Fetch the newsgroups from the server first"}}),
          run};
}

}  // namespace velkor::ctl
