/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The two forms that every listing command can print. */
#ifndef VELKORCTL_FORMATS_H
#define VELKORCTL_FORMATS_H

#include <string>
#include <utility>
#include <vector>

#include "velkorctl/command.h"
#include "velkorctl/json_lines.h"
#include "velkorctl/table.h"

namespace velkor::ctl {

/** --format with its choices; without more of them a table or JSON. */
Option format_option(const std::string &help = "Output format: table (default) or json",
                     const std::vector<std::string> &choices = {"table", "json"});
/** --no-header */
Option no_header_option();

/** The command's own options, then --format and --no-header. */
std::vector<Option> with_format_options(std::vector<Option> options);

bool wants_json(const Arguments &arguments);

/** Prints the table, fitted to the width of a terminal. */
void print(const Table &table, const Context &context);
/** Prints the value on a line. */
void print(const Json &json, const Context &context);

/**
 * Prints items in the form asked for. `row` makes the cells of an item; `add_members` adds its
 * members to the JSON object begun.
 */
template <typename Range, typename Row, typename AddMembers>
void print_list(const Context &context, std::vector<Column> columns, const Range &items, Row row,
                AddMembers add_members) {
  if (!wants_json(context.arguments)) {
    Table table(std::move(columns));
    for (const auto &item : items)
      table.add(row(item));
    return print(table, context);
  }
  JsonLines lines(context.out);
  for (const auto &item : items) {
    Json json;
    json.begin_object();
    add_members(json, item);
    lines.add(json.end_object());
  }
  lines.finish();
}

}  // namespace velkor::ctl

#endif
