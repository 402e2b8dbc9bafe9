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
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

std::string sub_category_of(const ZoxFilter &filter) {
  return zox_category_get_scat_name(filter.cat, static_cast<guint32>(filter.sCat));
}

void print_filters(const Context &context) {
  using Align = Column::Align;
  const auto row = [number = 0](const ZoxFilter *filter) mutable -> std::vector<std::string> {
    return {std::to_string(++number),
            std::string(view_of(filter->name)),
            zox_string_category(filter->cat),
            sub_category_of(*filter),
            std::string(view_of(filter->extraTag)),
            joined(tag_names(filter->cat, filter->tags))};
  };
  const auto add_members = [number = 0](Json &json, const ZoxFilter *filter) mutable {
    json.member("number", ++number).member("name", filter->name);
    json.member("category", filter->cat).member("subCategory", filter->sCat);
    json.member("freeTag", filter->extraTag).begin_array("tags");
    for (const GString *code : Items<GString>(filter->tags))
      json.value(view_of(code));
    json.end_array();
  };
  print_list(context,
             {{"#", Align::right},
              {"FILTER", Align::left, true},
              {"CATEGORY"},
              {"SUB-CATEGORY"},
              {"FREE TAG", Align::left, true},
              {"TAGS", Align::left, true}},
             Items<ZoxFilter>(core->filterlist->filters), row, add_members);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  print_filters(context);
  return Exit::ok;
}

}  // namespace

Command filters_command() {
  return {"filters", "Print the saved filters", {}, with_format_options({}), run};
}

}  // namespace velkor::ctl
