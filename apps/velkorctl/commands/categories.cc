/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl categories: the category tree with the number of postings in each category. */
#include <ctime>

#include <velkor/zox_category.h>

#include "support/slist.h"
#include "support/text.h"
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

void print_tree(const Context &context) {
  const auto row = [](const ZoxCategory *category) -> std::vector<std::string> {
    return {(category->isMain != 0 ? "" : "  ") + std::string(view_of(category->name)),
            std::to_string(category->count)};
  };
  const auto add_members = [](Json &json, const ZoxCategory *category) {
    json.member("category", category->id).member("main", category->isMain != 0);
    json.member("name", category->name).member("count", category->count);
  };
  print_list(context, {{"CATEGORY", Column::Align::left, true}, {"COUNT", Column::Align::right}},
             Items<ZoxCategory>(zox_categories_get()), row, add_members);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  count(select_postings(*filter_of(context.arguments, std::time(nullptr))));
  print_tree(context);
  return Exit::ok;
}

}  // namespace

Command categories_command() {
  return {"categories",
          "Print the category tree and count the postings that the options select",
          {},
          with_format_options(filter_options()),
          run};
}

}  // namespace velkor::ctl
