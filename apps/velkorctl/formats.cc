/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/formats.h"

namespace velkor::ctl {

Option format_option(const std::string &help, const std::vector<std::string> &choices) {
  return {"--format", "FORMAT", help, false, choices};
}

Option no_header_option() {
  return {"--no-header", "", "Print the table without the column titles"};
}

std::vector<Option> with_format_options(std::vector<Option> options) {
  options.push_back(format_option());
  options.push_back(no_header_option());
  return options;
}

bool wants_json(const Arguments &arguments) {
  return arguments.value("--format") == "json";
}

void print(const Table &table, const Context &context) {
  context.out.write(table.text(context.out.width(), !context.arguments.has("--no-header")));
}

void print(const Json &json, const Context &context) {
  context.out.write(json.compact() + "\n");
}

}  // namespace velkor::ctl
