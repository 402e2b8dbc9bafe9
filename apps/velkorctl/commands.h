/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** All commands; each is described and carried out in its file under commands/. */
#ifndef VELKORCTL_COMMANDS_H
#define VELKORCTL_COMMANDS_H

#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

std::vector<Command> all_commands();
std::vector<CommandGroup> command_groups();

Command categories_command();
Command config_get_command();
Command config_list_command();
Command config_set_command();
Command config_unset_command();
Command filters_command();
Command groups_command();
Command list_command();
Command tags_command();
Command update_command();

}  // namespace velkor::ctl

#endif
