/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/commands.h"

namespace velkor::ctl {

std::vector<Command> all_commands() {
  return {
      update_command(),        list_command(),
      show_command(),          forum_command(),
      explain_command(),       open_command(),
      categories_command(),    groups_command(),
      filters_command(),       tags_command(),
      watch_add_command(),     watch_remove_command(),
      watch_list_command(),    watch_clear_command(),
      watch_upload_command(),  watch_download_command(),
      watchers_add_command(),  watchers_remove_command(),
      watchers_list_command(), watchers_run_command(),
      badwords_add_command(),  badwords_remove_command(),
      badwords_list_command(), badwords_test_command(),
      mail_check_command(),    mail_fetch_command(),
      mail_list_command(),     mail_read_command(),
      mail_send_command(),     mail_delete_command(),
      kudos_command(),         warn_command(),
      profile_command(),       myzox_command(),
      post_command(),          signup_command(),
      account_set_command(),   listen_command(),
      config_get_command(),    config_set_command(),
      config_unset_command(),  config_list_command(),
      cache_info_command(),    cache_verify_command(),
      cache_backup_command(),  cache_restore_command(),
      cache_resync_command(),  completion_command(),
  };
}

std::vector<CommandGroup> command_groups() {
  return {
      {"watch", "The watchlist: postings to keep an eye on"},
      {"watchers", "Texts to look for in new postings"},
      {"badwords", "Words whose postings are dropped"},
      {"mail", "Private messages"},
      {"account", "The account that is used"},
      {"config", "Show and change the settings"},
      {"cache", "Look after the files of the cache"},
  };
}

}  // namespace velkor::ctl
