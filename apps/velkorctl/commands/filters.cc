/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl filters: the saved filters. */
#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/json.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

std::string sub_category_of(const ZoxFilter &filter) {
  return zox_category_get_scat_name(filter.cat, static_cast<guint32>(filter.sCat));
}

std::string tags_of(const ZoxFilter &filter) {
  std::string words;
  for (const GString *code : Items<GString>(filter.tags))
    words += (words.empty() ? "" : ", ") + tag_name(filter.cat, code);
  return words;
}

void print_table(const Context &context) {
  using Align = Column::Align;
  Table table({{"#", Align::right},
               {"FILTER", Align::left, true},
               {"CATEGORY"},
               {"SUB-CATEGORY"},
               {"FREE TAG", Align::left, true},
               {"TAGS", Align::left, true}});
  int number = 0;
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters))
    table.add({std::to_string(++number), std::string(view_of(filter->name)),
               zox_string_category(filter->cat), sub_category_of(*filter),
               std::string(view_of(filter->extraTag)), tags_of(*filter)});
  print(table, context);
}

void print_json(Output &out) {
  JsonLines lines(out);
  int number = 0;
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters)) {
    Json json;
    json.begin_object().number("number", ++number).text("name", filter->name);
    json.number("category", filter->cat).number("subCategory", filter->sCat);
    json.text("freeTag", filter->extraTag).begin_array("tags");
    for (const GString *code : Items<GString>(filter->tags))
      json.item(view_of(code));
    lines.add(json.end_array().end_object());
  }
  lines.finish();
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  if (wants_json(context.arguments))
    print_json(context.out);
  else
    print_table(context);
  return Exit::ok;
}

}  // namespace

Command filters_command() {
  return {"filters", "Print the saved filters", {}, with_format_options({}), run};
}

}  // namespace velkor::ctl
