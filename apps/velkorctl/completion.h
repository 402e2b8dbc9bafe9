/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Completion of command lines in the shell, out of the table of commands. */
#ifndef VELKORCTL_COMPLETION_H
#define VELKORCTL_COMPLETION_H

#include <string>
#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

/** A script for bash that completes commands, options and the values that are known. */
std::string bash_completion(const std::vector<Command> &commands);

}  // namespace velkor::ctl

#endif
