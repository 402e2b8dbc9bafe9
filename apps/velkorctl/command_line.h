/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Turns the words of the command line into a command with its arguments. */
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
  /** The help or the version asked for. */
  std::string help_text;
};

/** The options of GlobalOptions. */
std::vector<Option> global_options();

/** `words`: what follows the program's name. Throws a usage Failure on what is not understood. */
ParsedCommandLine parse_command_line(const std::vector<CommandGroup> &groups,
                                     const std::vector<Command> &commands,
                                     const std::vector<std::string> &words);

}  // namespace velkor::ctl

#endif
