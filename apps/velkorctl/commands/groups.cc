/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl groups: the newsgroups that the cache knows, fetched anew when asked for. */
#include <velkor/zox_groups.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/file_stamp.h"
#include "velkorctl/formats.h"
#include "velkorctl/json.h"

namespace velkor::ctl {
namespace {

void print_table(const Context &context) {
  Table table({{"ID", Column::Align::right}, {"NEWSGROUP", Column::Align::left, true}});
  for (const ZoxGroup *group : Items<ZoxGroup>(zox_groups_get()))
    table.add({std::to_string(group->id), std::string(view_of(group->groupName))});
  print(table, context);
}

void print_json(Output &out) {
  JsonLines lines(out);
  for (const ZoxGroup *group : Items<ZoxGroup>(zox_groups_get())) {
    Json json;
    json.begin_object().number("id", group->id).text("name", group->groupName);
    lines.add(json.end_object());
  }
  lines.finish();
}

void fetch(const CoreSession &session) {
  session.require_account();
  const std::filesystem::path file = session.directory() / "velkor.groups.gz";
  const FileStamp before(file);
  require_success(zox_group_fetch(), nullptr);
  if (FileStamp(file) == before)
    throw Failure(Exit::files, "the newsgroups could not be saved in " + file.string());
}

Exit run(const Context &context) {
  using Access = CoreSession::Access;
  const bool fetching = context.arguments.has("--fetch");
  const CoreSession session(context.options, fetching ? Access::write : Access::read,
                            Load::settings);
  if (fetching)
    fetch(session);
  if (wants_json(context.arguments))
    print_json(context.out);
  else
    print_table(context);
  return Exit::ok;
}

}  // namespace

Command groups_command() {
  return {"groups",
          "Print the newsgroups that the cache knows",
          {},
          with_format_options({{"--fetch", "", "Ask the server for all newsgroups first"}}),
          run};
}

}  // namespace velkor::ctl
