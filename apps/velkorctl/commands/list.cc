/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl list: the cached postings that a filter accepts. */
#include <ctime>
#include <limits>
#include <string_view>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_sort.h>

#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/filter_options.h"
#include "velkorctl/formats.h"
#include "velkorctl/postings.h"
#include "velkorctl/safe_text.h"

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

/** The display document as the library prints it; only a terminal is spared its controls. */
void print_xml(ZoxFilter &filter, const Context &context) {
  if (context.arguments.has("--limit"))
    throw usage_error("--limit cannot be combined with --format xml");
  filter.perCategory = context.arguments.has("--per-category") ? 1 : 0;
  zox_eventlist_apply_filter(core->eventlist, &filter);
  const OwnedString document(zox_events_sort_filtered(nullptr));
  const std::string_view text = view_of(document.get());
  if (context.out.width() > 0)
    context.out.write(safe_text(text, Lines::keep));
  else
    context.out.write(text);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const OwnedFilter filter = filter_of(context.arguments, std::time(nullptr));
  if (context.arguments.value("--format") == "xml") {
    print_xml(*filter, context);
    return Exit::ok;
  }
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
  options.push_back({"--format",
                     "FORMAT",
                     "table (default), json, or xml: the display document",
                     false,
                     {"table", "json", "xml"}});
  options.push_back({"--per-category", "", "In the display document, a block per main category"});
  options.push_back({"--no-header", "", "Leave the titles of the columns out"});
  return {"list", "Print the cached postings that the options choose", {}, options, run};
}

}  // namespace velkor::ctl
