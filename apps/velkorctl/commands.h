/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** All commands; each is described and carried out in its file under commands/. */
#ifndef VELKORCTL_COMMANDS_H
#define VELKORCTL_COMMANDS_H

#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

/** The table that the command line, its help and its completion are made of. */
std::vector<CommandGroup> all_commands();

std::vector<Command> account_commands();
std::vector<Command> badwords_commands();
Command cache_backup_command();
std::vector<Command> cache_commands();
Command cache_restore_command();
Command categories_command();
Command completion_command();
std::vector<Command> config_commands();
Command doctor_command();
Command explain_command();
Command forum_command();
Command groups_command();
Command kudos_command();
Command list_command();
Command listen_command();
std::vector<Command> mail_commands();
Command myzox_command();
Command open_command();
Command post_command();
Command profile_command();
Command show_command();
Command signup_command();
Command tags_command();
Command update_command();
Command warn_command();
std::vector<Command> filters_commands();
/** Those of them that change the filters. */
std::vector<Command> filter_change_commands();
std::vector<Command> watch_commands();
std::vector<Command> watchers_commands();

}  // namespace velkor::ctl

#endif
