/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Finds the command that a command line names, with its options and arguments. */
#ifndef VELKORCTL_COMMAND_LINE_H
#define VELKORCTL_COMMAND_LINE_H

#include <string>
#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

struct ParsedCommandLine {
  GlobalOptions options;
  Arguments arguments;
  /** Null when only `help_text` is to be printed. */
  const Command *command = nullptr;
  /** The whole name of the command with dots, as in "config.set". */
  std::string name;
  /** The help or the version asked for. */
  std::string help_text;
};

/** The options of GlobalOptions. */
std::vector<Option> global_options();

/**
 * `words` is what follows the program's name. The result points into `commands`. Throws a usage
 * Failure when there is no such command, option or argument.
 */
ParsedCommandLine parse_command_line(const std::vector<CommandGroup> &commands,
                                     const std::vector<std::string> &words);

}  // namespace velkor::ctl

#endif
