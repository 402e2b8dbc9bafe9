/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/formats.h"

namespace velkor::ctl {

Option format_option() {
  return {"--format", "FORMAT", "table (default) or json", false, {"table", "json"}};
}

std::vector<Option> with_format_options(std::vector<Option> options) {
  options.push_back(format_option());
  options.push_back({"--no-header", "", "Leave the titles of the columns out"});
  return options;
}

bool wants_json(const Arguments &arguments) {
  return arguments.value("--format") == "json";
}

void print(const Table &table, const Context &context) {
  context.out.write(table.text(context.out.width(), !context.arguments.has("--no-header")));
}

}  // namespace velkor::ctl
