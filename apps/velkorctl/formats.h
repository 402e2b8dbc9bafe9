/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The options that every command with data has: the format, the fields and the order. */
#ifndef VELKORCTL_FORMATS_H
#define VELKORCTL_FORMATS_H

#include <string>
#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

enum class Format { table, tsv, json, ndjson, xml, html };

/** The format asked for; a table without --format. */
Format format_of(const Arguments &arguments);

/**
 * Whether the options ask for records; a command may print its text for people instead when they
 * do not.
 */
bool wants_records(const Arguments &arguments);

/**
 * The command with the options for printing its records: --format and --fields and, for a list,
 * --sort, --reverse, --limit and --no-header. `more_formats`: besides table, tsv, json and ndjson.
 */
Command with_output(Command command, RecordInfo record,
                    const std::vector<std::string> &more_formats = {});

/** Throws a usage Failure when --fields or --limit is wrong. */
void check_output_options(const Command &command, const Arguments &arguments);

/** The words of a list with commas, as --fields has it. */
std::vector<std::string> words_of(const std::string &list);

}  // namespace velkor::ctl

#endif
