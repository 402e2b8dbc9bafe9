/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl list: the cached postings that a filter accepts. */
#include <ctime>
#include <limits>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/filter_options.h"
#include "velkorctl/formats.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {
namespace {

void limit(std::vector<gint32> &ids, const Arguments &arguments) {
  const auto given = arguments.value("--limit");
  if (!given)
    return;
  const auto most = static_cast<std::size_t>(
      number_in_range(*given, 1, std::numeric_limits<gint32>::max(), "--limit"));
  if (ids.size() > most)
    ids.resize(most);
}

void print_table(const std::vector<gint32> &ids, const Context &context) {
  Table table(posting_columns());
  for (const gint32 id : ids)
    if (const OwnedEvent posting = find_posting(id))
      table.add(posting_row(*posting));
  print(table, context);
}

void print_json(const std::vector<gint32> &ids, Output &out) {
  JsonLines lines(out);
  for (const gint32 id : ids) {
    const OwnedEvent posting = find_posting(id);
    if (!posting)
      continue;
    Json json;
    json.begin_object();
    add_posting(json, *posting);
    lines.add(json.end_object());
  }
  lines.finish();
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const OwnedFilter filter = filter_of(context.arguments, std::time(nullptr));
  std::vector<gint32> ids = select_postings(*filter);
  limit(ids, context.arguments);
  if (wants_json(context.arguments))
    print_json(ids, context.out);
  else
    print_table(ids, context);
  return Exit::ok;
}

}  // namespace

Command list_command() {
  std::vector<Option> options = filter_options();
  options.push_back({"-l,--limit", "N", "Print so many postings at most"});
  return {"list",
          "Print the cached postings that the options choose",
          {},
          with_format_options(options),
          run};
}

}  // namespace velkor::ctl
