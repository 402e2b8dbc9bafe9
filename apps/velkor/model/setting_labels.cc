/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/setting_labels.h"

#include <array>

#include <glib/gi18n.h>

namespace velkor::app {

std::span<const SettingLabel> setting_labels() noexcept {
  using enum SettingGroup;
  static constexpr std::array labels{
      SettingLabel{"username", account, N_("User name")},
      SettingLabel{"password", account, N_("Password")},
      SettingLabel{main_server_key, connection, N_("Server")},
      SettingLabel{dump_server_key, connection, N_("Server of the downloads")},
      SettingLabel{"proxyHost", connection, N_("Proxy")},
      SettingLabel{"proxyPort", connection, N_("Port of the proxy")},
      SettingLabel{"proxyUser", connection, N_("User name for the proxy")},
      SettingLabel{"proxyPassword", connection, N_("Password for the proxy")},
      SettingLabel{"verwijderPostsNaXDagen", update, N_("Age limit")},
      SettingLabel{"recursiveUpdate", update, N_("Update until nothing is new")},
      SettingLabel{"lastCheck", update, N_("Last update")},
      SettingLabel{"prevCheck", update, N_("Update before the last one")},
      SettingLabel{"watcher", spots, N_("Watch words")},
      SettingLabel{"badword", spots, N_("Bad words")},
      SettingLabel{"ratingScale", spots, N_("Highest rating")},
      SettingLabel{"groupFilterList", spots, N_("Newsgroups")},
      SettingLabel{"ledenCount", service, N_("Members")},
      SettingLabel{"usersOnline", service, N_("Users online")},
      SettingLabel{"updatenBijOpstarten", others, N_("Update at the start")},
      SettingLabel{"startMaximized", others, N_("Start maximised")},
      SettingLabel{"toonStatusBijLaden", others, N_("Progress while loading")},
      SettingLabel{"toonInfoBijEenZoekresultaat", others, N_("Details of a single result")},
      SettingLabel{"toonCategoriseerdeLijstBijKnopNieuw", others, N_("New spots by category")},
      SettingLabel{"geenTabbedBrowsing", others, N_("Windows instead of tabs")},
      SettingLabel{"openPostinfoOpAchtergrond", others, N_("Details in the background")},
      SettingLabel{"toonWatcherNotifications", others, N_("Notifications of watchers")},
      SettingLabel{"trayIcon", others, N_("Icon in the system tray")},
      SettingLabel{"htmlRenderer", others, N_("Renderer")},
      SettingLabel{"gebruikFontFamily", others, N_("Font of the desktop")},
      SettingLabel{"statusFilter", others, N_("States to show")},
      SettingLabel{"toonGUIGroupFilter", others, N_("Show the newsgroup filter")},
      SettingLabel{"groupFilter", others, N_("Newsgroup filter")},
      SettingLabel{"toonIRCClient", others, N_("Chat")},
      SettingLabel{"ircNickname", others, N_("Nickname in the chat")},
      SettingLabel{"ircAltNickname", others, N_("Second nickname in the chat")}};
  return labels;
}

const char *title_of(SettingGroup group) noexcept {
  switch (group) {
  case SettingGroup::account:
    return N_("Account");
  case SettingGroup::connection:
    return N_("Connection");
  case SettingGroup::update:
    return N_("Updates");
  case SettingGroup::spots:
    return N_("Spots");
  case SettingGroup::service:
    return N_("The service");
  case SettingGroup::others:
    break;
  }
  return N_("Other front ends");
}

}  // namespace velkor::app
