/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl filters list and export: the saved filters. */
#include <algorithm>
#include <iterator>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_string.h>

#include "support/owned.h"
#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {
namespace {

/** A saved filter with its number, counted from 1. */
struct Numbered {
  int number;
  const ZoxFilter *filter;
};

std::vector<Numbered> numbered_filters() {
  std::vector<Numbered> filters;
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters))
    filters.push_back({static_cast<int>(filters.size()) + 1, filter});
  return filters;
}

Value sub_category_of(const Numbered &one) {
  return text_or_nothing(
      zox_category_get_scat_name(one.filter->cat, static_cast<guint32>(one.filter->sCat)));
}

Fields<Numbered> fields() {
  using F = const Numbered &;
  return {
      {{.name = "number", .type = type::number(), .rank = 1},
       [](F filter) -> Value { return filter.number; }},
      {{.name = "name", .type = type::text(), .rank = 1, .flexible = true},
       [](F filter) -> Value { return filter.filter->name; }},
      {{.name = "category", .type = type::text(), .rank = 2},
       [](F filter) { return text_or_nothing(zox_string_category(filter.filter->cat)); }},
      {{.name = "categoryId", .type = type::number()},
       [](F filter) -> Value { return filter.filter->cat; }},
      {{.name = "subCategory", .type = type::text(), .rank = 3}, sub_category_of},
      {{.name = "subCategoryId", .type = type::number()},
       [](F filter) -> Value { return filter.filter->sCat; }},
      {{.name = "freeTag", .type = type::text(), .rank = 5, .flexible = true},
       [](F filter) -> Value { return filter.filter->extraTag; }},
      {{.name = "tags", .type = tags_type(), .rank = 4, .flexible = true},
       [](F filter) { return tag_values(filter.filter->cat, filter.filter->tags); }},
  };
}

Exit run_list(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  print_records(context, fields(), numbered_filters());
  return Exit::ok;
}

Exit run_export(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  const OwnedString document(zox_filterlist_print(core->filterlist->filters));
  context.out.write(std::string(view_of(document.get())));
  return Exit::ok;
}

}  // namespace

std::vector<Command> filters_commands() {
  std::vector<Command> commands{
      with_output({"list", "Print the saved filters", {}, {}, run_list},
                  list_of_records(fields(), "filter", "filters")),
      {"export", "Print the saved filters as a document that import reads", {}, {}, run_export},
  };
  std::ranges::move(filter_change_commands(), std::back_inserter(commands));
  return commands;
}

}  // namespace velkor::ctl
