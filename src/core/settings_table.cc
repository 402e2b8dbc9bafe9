/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/settings_table.h"

#include <algorithm>
#include <array>
#include <limits>

namespace velkor::settings {
namespace {

using C = ZoxConfig;

constexpr ZoxSettingUser library = ZOX_SETTING_LIBRARY;
constexpr ZoxSettingUser front_end = ZOX_SETTING_FRONT_END;
constexpr gint64 highest_number = std::numeric_limits<gint32>::max();

/** Marks a text that front ends translate. */
constexpr const char *translatable(const char *text) noexcept {
  return text;
}

constexpr ZoxSetting facts(const char *key, ZoxSettingType type, ZoxSettingUser user,
                           const char *initial, const char *description) noexcept {
  ZoxSetting facts{};
  facts.key = key;
  facts.type = type;
  facts.user = user;
  facts.defaultText = initial;
  facts.description = description;
  return facts;
}

constexpr ZoxSetting in_range(ZoxSetting facts, gint64 lowest, gint64 highest) noexcept {
  facts.lowest = lowest;
  facts.highest = highest;
  return facts;
}

constexpr ZoxSetting from_server(ZoxSetting facts) noexcept {
  facts.readOnly = 1;
  return facts;
}

/** A text of the account or the proxy: absent unless it has at least one character. */
constexpr Setting access(const char *key, ZoxString *C::*member, ZoxSettingType type,
                         const char *description) noexcept {
  return {facts(key, type, library, nullptr, description),
          Text{member, Empty::none, Unset::skipped}};
}

constexpr Setting taste(const char *key, ZoxString *C::*member, const char *initial, Unset unset,
                        const char *description) noexcept {
  return {facts(key, ZOX_SETTING_TEXT, front_end, initial, description),
          Text{member, Empty::kept, unset}};
}

constexpr Setting time(const char *key, gint64 C::*member, const char *description) noexcept {
  ZoxSetting row =
      in_range(facts(key, ZOX_SETTING_TIME, library, "0", description), 0, highest_number);
  row.unit = ZOX_SETTING_SECONDS;
  return {row, Time{member}};
}

constexpr Setting flag(const char *key, gint32 C::*member, const char *initial,
                       const char *description, ZoxSettingUser user = front_end) noexcept {
  return {in_range(facts(key, ZOX_SETTING_FLAG, user, initial, description), 0, 1), Number{member}};
}

constexpr Setting retention(const char *key, gint32 C::*member, const char *initial,
                            const char *description) noexcept {
  ZoxSetting row = in_range(facts(key, ZOX_SETTING_CHOICE, library, initial, description), 0,
                            retention_days.size() - 1);
  row.unit = ZOX_SETTING_DAYS;
  row.choices = retention_days.data();
  return {row, Number{member}};
}

constexpr Setting port(Setting setting) noexcept {
  return {in_range(setting.facts, 1, std::numeric_limits<guint16>::max()), setting.field};
}

constexpr ZoxSetting list(const char *key, ZoxSettingType type, ZoxSettingUser user,
                          const char *description) noexcept {
  return facts(key, type, user, nullptr, description);
}

constexpr std::array rows{
    access("username", &C::username, ZOX_SETTING_TEXT,
           translatable("The user name of the account.")),
    access("password", &C::password, ZOX_SETTING_SECRET,
           translatable("The password of the account.")),
    access(
        "proxyHost", &C::proxyHost, ZOX_SETTING_TEXT,
        translatable(
            "The HTTP proxy for all requests, or socks5h://HOST for a SOCKS proxy; it is used when "
            "proxyPort is set as well.")),
    port(access("proxyPort", &C::proxyPort, ZOX_SETTING_TEXT,
                translatable("The port of the proxy."))),
    access(
        "proxyUser", &C::proxyUser, ZOX_SETTING_TEXT,
        translatable("The user name for the proxy; it is used when proxyPassword is set as well.")),
    access("proxyPassword", &C::proxyPassword, ZOX_SETTING_SECRET,
           translatable("The password for the proxy.")),
    taste("htmlRenderer", &C::htmlRenderer, "", Unset::written,
          translatable("The name of the renderer that shows lists and postings.")),
    time("lastCheck", &C::lastCheck,
         translatable(
             "The server's time of the last update; the next one asks for what came after it.")),
    time("prevCheck", &C::prevCheck,
         translatable(
             "The server's time of the update before the last one; later postings count as new.")),
    Setting{from_server(facts("ledenCount", ZOX_SETTING_COUNT, front_end, "0",
                              translatable("The number of members, as the server states it."))),
            Count{&C::ledenCount}},
    Setting{from_server(facts("usersOnline", ZOX_SETTING_TEXT, front_end, "Onbekend",
                              translatable("The users online, as the server states them."))),
            Text{&C::usersOnline, Empty::none, Unset::written}},
    flag("updatenBijOpstarten", &C::updatenBijOpstarten, "1",
         translatable("Whether an update runs when the program starts.")),
    flag("toonInfoBijEenZoekresultaat", &C::toonInfoBijEenZoekresultaat, "1",
         translatable("Whether the details are shown when a search finds a single posting.")),
    flag("startMaximized", &C::startMaximized, "1",
         translatable("Whether the window is maximised when the program starts.")),
    flag("toonStatusBijLaden", &C::toonStatusBijLaden, "1",
         translatable("Whether progress is shown while the cache is loaded.")),
    flag("toonCategoriseerdeLijstBijKnopNieuw", &C::toonCategoriseerdeLijstBijKnopNieuw, "1",
         translatable("Whether the button for new postings shows them by category.")),
    retention("verwijderPostsNaXDagen", &C::verwijderPostsNaXDagen, "1",
              translatable(
                  "The age at which postings leave the cache, unless they are on the watchlist.")),
    flag("trayIcon", &C::trayIcon, "1",
         translatable("Whether there is an icon in the system tray.")),
    flag("gebruikFontFamily", &C::gebruikFontFamily, "1",
         translatable("Whether lists and postings are shown in the font family of the desktop.")),
    flag("toonGUIGroupFilter", &C::toonGUIGroupFilter, "0",
         translatable("Whether the newsgroup filter is shown.")),
    flag("recursiveUpdate", &C::recursiveUpdate, "0",
         translatable("Whether an update goes on until the server has nothing new."), library),
    flag("geenTabbedBrowsing", &C::geenTabbedBrowsing, "0",
         translatable("Whether postings open in windows instead of tabs.")),
    flag("toonWatcherNotifications", &C::toonWatcherNotifications, "1",
         translatable("Whether a notification announces what the watchers find.")),
    flag("openPostinfoOpAchtergrond", &C::openPostinfoOpAchtergrond, "1",
         translatable("Whether the details of a posting open in the background.")),
    Setting{
        in_range(facts("ratingScale", ZOX_SETTING_NUMBER, library, "100",
                       translatable(
                           "The rating that lists show as 100; others are shown in proportion.")),
                 1, highest_number),
        Number{&C::ratingScale}},
    flag("toonIRCClient", &C::toonIRCClient, "1",
         translatable("Whether the chat client is shown.")),
    taste("ircAltNickname", &C::ircAltNickname, "", Unset::written,
          translatable("The nickname in the chat when the first one is taken.")),
    taste("ircNickname", &C::ircNickname, nullptr, Unset::skipped,
          translatable("The nickname in the chat.")),
    flag("groupFilter", &C::groupFilter, "0", translatable("Whether the newsgroup filter is on.")),
    Setting{
        in_range(list("groupFilterList", ZOX_SETTING_SPLIT_LIST, library,
                      translatable(
                          "The numbers of the newsgroups that the newsgroup filter lets through.")),
                 0, std::numeric_limits<guint32>::max()),
        SplitList{&C::groupFilterList}},
    Setting{in_range(list("watchlist", ZOX_SETTING_TEXT_LIST, library,
                          translatable("The IDs of the postings on the watchlist.")),
                     1, highest_number),
            TextList{&C::watchlist, Empty::kept}},
    Setting{list("watcher", ZOX_SETTING_TEXT_LIST, library,
                 translatable("The texts that are looked for in the titles of new postings.")),
            TextList{&C::watcher, Empty::kept}},
    // An empty bad word would be found in every title.
    Setting{list("badword", ZOX_SETTING_TEXT_LIST, library,
                 translatable("The words whose occurrence in a title drops the posting.")),
            TextList{&C::badword, Empty::none}},
    Setting{in_range(list("statusFilter", ZOX_SETTING_NUMBER_LIST, front_end,
                          translatable("The states of the postings to show.")),
                     ZOX_STATUS_UNKNOWN, ZOX_STATUS_UNSUPPORTED),
            NumberList{&C::statusFilter}},
};

}  // namespace

std::span<const Setting> table() noexcept {
  return rows;
}

const Setting *find(std::string_view key) noexcept {
  const auto *found =
      std::ranges::find_if(rows, [key](const Setting &row) { return key == row.facts.key; });
  return found == rows.end() ? nullptr : found;
}

}  // namespace velkor::settings
