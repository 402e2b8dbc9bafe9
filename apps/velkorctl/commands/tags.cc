/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl tags: the tags of the service, by category and group. */
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

std::vector<const ZoxTag *> selected_tags(const Arguments &arguments) {
  const auto given = arguments.value("CATEGORY");
  const gint32 category = given ? category_number(*given) : -1;
  std::vector<const ZoxTag *> result;
  for (const ZoxTag *tag : Items<ZoxTag>(zox_get_tags()))
    if (tag->code != nullptr && (!given || static_cast<gint32>(tag->category) == category))
      result.push_back(tag);
  return result;
}

Fields<const ZoxTag *> fields() {
  using T = const ZoxTag *;
  return {
      {{.name = "category", .type = type::text(), .rank = 2},
       [](T tag) -> Value { return zox_string_category(static_cast<gint32>(tag->category)); }},
      {{.name = "categoryId", .type = type::number()},
       [](T tag) -> Value { return tag->category; }},
      {{.name = "code", .type = type::text(), .rank = 1}, [](T tag) -> Value { return tag->code; }},
      {{.name = "group", .type = type::text(), .rank = 3},
       [](T tag) -> Value { return tag->group->name; }},
      {{.name = "name", .type = type::text(), .rank = 1, .flexible = true},
       [](T tag) -> Value { return tag->name; }},
  };
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  print_records(context, fields(), selected_tags(context.arguments));
  return Exit::ok;
}

}  // namespace

Command tags_command() {
  return with_output(
      {"tags",
       "Print the tags by category and group",
       {{"CATEGORY", "Print only the tags of this category", Argument::Count::optional}},
       {},
       run},
      list_of_records(fields(), "tag", "tags"));
}

}  // namespace velkor::ctl
