/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The two forms that every listing command can print. */
#ifndef VELKORCTL_FORMATS_H
#define VELKORCTL_FORMATS_H

#include <vector>

#include "velkorctl/command.h"
#include "velkorctl/table.h"

namespace velkor::ctl {

/** --format */
Option format_option();

/** --format and --no-header, behind the command's own options. */
std::vector<Option> with_format_options(std::vector<Option> options);

bool wants_json(const Arguments &arguments);

/** As wide as the terminal allows. */
void print(const Table &table, const Context &context);

}  // namespace velkor::ctl

#endif
