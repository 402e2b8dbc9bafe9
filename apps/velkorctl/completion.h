/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Completion of command lines in the shell. */
#ifndef VELKORCTL_COMPLETION_H
#define VELKORCTL_COMPLETION_H

#include <string>
#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

/** A script for bash that completes commands, options and known values of options. */
std::string bash_completion(const std::vector<CommandGroup> &commands);

}  // namespace velkor::ctl

#endif
