/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/commands.h"

namespace velkor::ctl {

std::vector<CommandGroup> all_commands() {
  return {
      {"",
       "",
       {update_command(), list_command(), show_command(), forum_command(), explain_command(),
        open_command(), categories_command(), groups_command(), tags_command(), kudos_command(),
        warn_command(), profile_command(), myzox_command(), post_command(), signup_command(),
        listen_command(), doctor_command(), completion_command()}},
      {"filters", "The saved filters, which make up the categories", filters_commands(), "list"},
      {"watch", "The watchlist: postings to keep an eye on", watch_commands()},
      {"watchers", "Texts to look for in the titles of new postings", watchers_commands()},
      {"badwords", "Words; a posting with one of them in its title is dropped",
       badwords_commands()},
      {"mail", "Private messages", mail_commands()},
      {"account", "The account that Velkor uses", account_commands()},
      {"config", "Show and change the settings", config_commands()},
      {"cache", "Check, back up and restore the files of the cache", cache_commands()},
  };
}

}  // namespace velkor::ctl
