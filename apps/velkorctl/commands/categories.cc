/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl categories: the category tree, each entry with what it accepts of the list at hand. */
#include <ctime>

#include <velkor/zox_category.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/filter_options.h"
#include "velkorctl/formats.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {
namespace {

/** Loading counts new postings only; what is shown counts the postings that the options choose. */
void count(const std::vector<gint32> &ids) {
  zox_categories_reset_counters();
  for (const gint32 id : ids)
    if (const OwnedEvent posting = find_posting(id))
      zox_category_update(posting.get());
}

void print_table(const Context &context) {
  Table table({{"CATEGORY", Column::Align::left, true}, {"COUNT", Column::Align::right}});
  for (const ZoxCategory *category : Items<ZoxCategory>(zox_categories_get()))
    table.add({(category->isMain != 0 ? "" : "  ") + std::string(view_of(category->name)),
               std::to_string(category->count)});
  print(table, context);
}

void print_json(Output &out) {
  JsonLines lines(out);
  for (const ZoxCategory *category : Items<ZoxCategory>(zox_categories_get())) {
    Json json;
    json.begin_object().number("category", category->id).flag("main", category->isMain != 0);
    json.text("name", category->name).number("count", category->count);
    lines.add(json.end_object());
  }
  lines.finish();
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  count(select_postings(*filter_of(context.arguments, std::time(nullptr))));
  if (wants_json(context.arguments))
    print_json(context.out);
  else
    print_table(context);
  return Exit::ok;
}

}  // namespace

Command categories_command() {
  return {"categories",
          "Print the category tree, counting the postings that the options choose",
          {},
          with_format_options(filter_options()),
          run};
}

}  // namespace velkor::ctl
