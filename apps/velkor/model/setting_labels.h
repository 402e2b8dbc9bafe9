/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How the window calls the settings, and where it shows them. */
#ifndef VELKOR_APP_MODEL_SETTING_LABELS_H
#define VELKOR_APP_MODEL_SETTING_LABELS_H

#include <span>
#include <string_view>

namespace velkor::app {

enum class SettingGroup { account, connection, update, spots, service, others };

struct SettingLabel {
  std::string_view key;
  SettingGroup group;
  const char *label;  // in English, to be translated
};

/** The keys under which a form has the servers, which are no settings of the library. */
inline constexpr std::string_view main_server_key = "server";
inline constexpr std::string_view dump_server_key = "staticServer";

/** In the order in which they are shown. The watchlist is not among them: it has a page. */
std::span<const SettingLabel> setting_labels() noexcept;

/** The title of a group, in English. */
const char *title_of(SettingGroup group) noexcept;

}  // namespace velkor::app

#endif
