/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl tags: the tags of the service, by category and group. */
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/json.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

std::vector<const ZoxTag *> chosen_tags(const Arguments &arguments) {
  const auto given = arguments.value("CATEGORY");
  const gint32 category = given ? category_number(*given) : -1;
  std::vector<const ZoxTag *> result;
  for (const ZoxTag *tag : Items<ZoxTag>(zox_get_tags()))
    if (tag->code != nullptr && (!given || static_cast<gint32>(tag->category) == category))
      result.push_back(tag);
  return result;
}

void print_table(const std::vector<const ZoxTag *> &tags, const Context &context) {
  Table table({{"CATEGORY"}, {"CODE"}, {"GROUP"}, {"TAG", Column::Align::left, true}});
  for (const ZoxTag *tag : tags)
    table.add({zox_string_category(static_cast<gint32>(tag->category)), tag->code->str,
               tag->group->name->str, tag->name->str});
  print(table, context);
}

void print_json(const std::vector<const ZoxTag *> &tags, Output &out) {
  JsonLines lines(out);
  for (const ZoxTag *tag : tags) {
    Json json;
    json.begin_object().number("category", tag->category).text("code", tag->code);
    json.text("group", tag->group->name).text("name", tag->name);
    lines.add(json.end_object());
  }
  lines.finish();
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  const std::vector<const ZoxTag *> tags = chosen_tags(context.arguments);
  if (wants_json(context.arguments))
    print_json(tags, context.out);
  else
    print_table(tags, context);
  return Exit::ok;
}

}  // namespace

Command tags_command() {
  return {"tags",
          "Print the tags, by category and group",
          {{"CATEGORY", "Only the tags of this category", Argument::Count::optional}},
          with_format_options({}),
          run};
}

}  // namespace velkor::ctl
