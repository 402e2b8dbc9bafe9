/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl categories: the category tree with the number of postings in each category. */
#include <ctime>

#include <velkor/zox_category.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/filter_options.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {
namespace {

/** Loading counts new postings only; here all postings that the options select are counted. */
void count(const std::vector<gint32> &ids) {
  zox_categories_reset_counters();
  for (const gint32 id : ids)
    if (const OwnedEvent posting = find_posting(id))
      zox_category_update(posting.get());
}

/** A main category, or a saved filter below one. */
Fields<const ZoxCategory *> fields() {
  using C = const ZoxCategory *;
  return {
      {{.name = "category", .type = type::text(), .rank = 1},
       [](C entry) -> Value { return zox_string_category(entry->id); }},
      {{.name = "categoryId", .type = type::number()}, [](C entry) -> Value { return entry->id; }},
      {{.name = "filter", .type = type::text(), .rank = 1, .flexible = true},
       [](C entry) -> Value { return entry->isMain != 0 ? Value() : Value(entry->name); }},
      {{.name = "count", .type = type::number(), .rank = 1},
       [](C entry) -> Value { return entry->count; }},
  };
}

std::vector<const ZoxCategory *> all_entries() {
  const Items<ZoxCategory> entries(zox_categories_get());
  return {entries.begin(), entries.end()};
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  count(select_postings(*filter_of(context.arguments, std::time(nullptr))));
  print_records(context, fields(), all_entries());
  return Exit::ok;
}

}  // namespace

Command categories_command() {
  return with_output({"categories",
                      "Print the category tree and count the postings that the options select",
                      {},
                      filter_options(),
                      run},
                     list_of_records(fields(), "entry", "entries"));
}

}  // namespace velkor::ctl
