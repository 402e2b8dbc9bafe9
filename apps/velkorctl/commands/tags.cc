/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl tags: the tags of the service, by category and group. */
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
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

void print_tags(const std::vector<const ZoxTag *> &tags, const Context &context) {
  const auto row = [](const ZoxTag *tag) -> std::vector<std::string> {
    return {zox_string_category(static_cast<gint32>(tag->category)), tag->code->str,
            tag->group->name->str, tag->name->str};
  };
  const auto add_members = [](Json &json, const ZoxTag *tag) {
    json.member("category", tag->category).member("code", tag->code);
    json.member("group", tag->group->name).member("name", tag->name);
  };
  print_list(context, {{"CATEGORY"}, {"CODE"}, {"GROUP"}, {"TAG", Column::Align::left, true}}, tags,
             row, add_members);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  print_tags(selected_tags(context.arguments), context);
  return Exit::ok;
}

}  // namespace

Command tags_command() {
  return {"tags",
          "Print the tags by category and group",
          {{"CATEGORY", "Print only the tags of this category", Argument::Count::optional}},
          with_format_options({}),
          run};
}

}  // namespace velkor::ctl
