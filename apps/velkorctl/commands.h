/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** All commands; each is described and carried out in its file under commands/. */
#ifndef VELKORCTL_COMMANDS_H
#define VELKORCTL_COMMANDS_H

#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

std::vector<Command> all_commands();
std::vector<CommandGroup> command_groups();

Command account_set_command();
Command badwords_add_command();
Command badwords_list_command();
Command badwords_remove_command();
Command badwords_test_command();
Command cache_backup_command();
Command cache_info_command();
Command cache_restore_command();
Command cache_resync_command();
Command cache_verify_command();
Command categories_command();
Command completion_command();
Command config_get_command();
Command config_list_command();
Command config_set_command();
Command config_unset_command();
Command explain_command();
Command filters_command();
Command forum_command();
Command groups_command();
Command kudos_command();
Command list_command();
Command listen_command();
Command mail_check_command();
Command mail_delete_command();
Command mail_fetch_command();
Command mail_list_command();
Command mail_read_command();
Command mail_send_command();
Command myzox_command();
Command open_command();
Command post_command();
Command profile_command();
Command show_command();
Command signup_command();
Command tags_command();
Command update_command();
Command warn_command();
Command watch_add_command();
Command watch_clear_command();
Command watch_download_command();
Command watch_list_command();
Command watch_remove_command();
Command watch_upload_command();
Command watchers_add_command();
Command watchers_list_command();
Command watchers_remove_command();
Command watchers_run_command();

}  // namespace velkor::ctl

#endif
