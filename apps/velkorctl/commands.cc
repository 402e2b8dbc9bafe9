/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/commands.h"

namespace velkor::ctl {

std::vector<Command> all_commands() {
  return {
      update_command(),       list_command(),        categories_command(), groups_command(),
      filters_command(),      tags_command(),        config_get_command(), config_set_command(),
      config_unset_command(), config_list_command(),
  };
}

std::vector<CommandGroup> command_groups() {
  return {
      {"config", "Show and change the settings"},
  };
}

}  // namespace velkor::ctl
