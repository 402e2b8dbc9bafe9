/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/settings.h"

#include <algorithm>
#include <limits>

#include <velkor/zox_splitted_list.h>

#include "support/owned.h"
#include "support/slist.h"
#include "velkorctl/arguments.h"
#include "velkorctl/failure.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using Kind = Setting::Kind;
using TextMember = GString *ZoxConfig::*;
using ListMember = GSList *ZoxConfig::*;

constexpr gint64 max_number = std::numeric_limits<gint32>::max();
/** The file is read in lines of at most 1023 bytes, the line feed included. */
constexpr std::size_t max_line_length = 1022;

void free_text(GString *text) noexcept {
  g_string_free(text, TRUE);
}
using TextList = ListBuilder<GString, free_text>;

bool has_outer_white_space(const std::string &text) noexcept {
  return !text.empty() && (g_ascii_isspace(text.front()) || g_ascii_isspace(text.back()));
}

bool has_control(const std::string &text) noexcept {
  return std::ranges::any_of(text, [](char letter) { return g_ascii_iscntrl(letter); });
}

/** The file has one value per line, and white space around it is lost. */
void require_storable(const Setting &setting, const std::string &value) {
  const std::string key = setting.key;
  if (has_control(value))
    throw usage_error(key + ": the value has a line break or a control character");
  if (has_outer_white_space(value))
    throw usage_error(key + ": the value begins or ends with white space");
  if (key.size() + 1 + value.size() > max_line_length)
    throw usage_error(key + ": the value is too long for velkor.conf");
}

std::string stored_form(const Setting &setting, const std::string &value) {
  require_storable(setting, value);
  switch (setting.kind) {
  case Kind::number_text:
    return std::to_string(number_in_range(value, setting.lowest, setting.highest, setting.key));
  case Kind::posting_ids:
    return std::to_string(posting_id(value));
  case Kind::newsgroups:
    return std::to_string(newsgroup_id(value));
  default:
    if (value.empty() && holds_list(setting))
      throw usage_error(std::string(setting.key) + ": an item is empty");
    return value;
  }
}

void assign_text(const Setting &setting, GString *&place, const std::vector<std::string> &values) {
  const bool given = !values.empty() && (!values.front().empty() || setting.default_value);
  const char *fallback = setting.default_value;
  const std::string text = given ? stored_form(setting, values.front()) : "";
  if (given)
    replace_string(place, g_string_new(text.c_str()));
  else
    replace_string(place, fallback == nullptr ? nullptr : g_string_new(fallback));
}

void assign_texts(const Setting &setting, GSList *&place, const std::vector<std::string> &values) {
  TextList items;
  std::size_t length = 0;
  for (const std::string &value : values) {
    const std::string item = stored_form(setting, value);
    length += item.size() + 1;
    items.append(g_string_new(item.c_str()));
  }
  if (setting.kind == Kind::newsgroups && length > max_line_length / 2)
    throw usage_error(std::string(setting.key) + ": too many newsgroups for velkor.conf");
  zox_splitted_list_free(&place);
  place = items.release();
}

void assign_states(GSList *&place, const std::vector<std::string> &values) {
  std::vector<gint32> numbers;
  for (const std::string &value : values)
    for (const gint32 state : state_numbers(value))
      numbers.push_back(state);
  g_slist_free(place);
  place = nullptr;
  for (const gint32 state : numbers)
    place = g_slist_append(place, GINT_TO_POINTER(state));
}

template <typename Number>
void assign_number(const Setting &setting, Number &place, const std::vector<std::string> &values) {
  const std::string text = values.empty() ? setting.default_value : values.front();
  place = static_cast<Number>(number_in_range(text, setting.lowest, setting.highest, setting.key));
}

std::vector<Setting> make_settings() {
  using C = ZoxConfig;
  const auto flag = [](const char *key, gint32 C::*member, const char *preset) {
    return Setting{key, Kind::number, member, 0, 1, preset};
  };
  return {
      {"username", Kind::text, &C::username},
      {"password", Kind::secret, &C::password},
      {"proxyHost", Kind::text, &C::proxyHost},
      {"proxyPort", Kind::number_text, &C::proxyPort, 1, 65535},
      {"proxyUser", Kind::text, &C::proxyUser},
      {"proxyPassword", Kind::secret, &C::proxyPassword},
      {"htmlRenderer", Kind::text, &C::htmlRenderer, 0, 0, ""},
      {"lastCheck", Kind::number, &C::lastCheck, 0, max_number, "0"},
      {"prevCheck", Kind::number, &C::prevCheck, 0, max_number, "0"},
      {"ledenCount", Kind::given_number, &C::ledenCount},
      {"usersOnline", Kind::given_text, &C::usersOnline},
      flag("updatenBijOpstarten", &C::updatenBijOpstarten, "1"),
      flag("toonInfoBijEenZoekresultaat", &C::toonInfoBijEenZoekresultaat, "1"),
      flag("startMaximized", &C::startMaximized, "1"),
      flag("toonStatusBijLaden", &C::toonStatusBijLaden, "1"),
      flag("toonCategoriseerdeLijstBijKnopNieuw", &C::toonCategoriseerdeLijstBijKnopNieuw, "1"),
      {"verwijderPostsNaXDagen", Kind::number, &C::verwijderPostsNaXDagen, 0, 6, "1"},
      flag("trayIcon", &C::trayIcon, "1"),
      flag("gebruikFontFamily", &C::gebruikFontFamily, "1"),
      flag("toonGUIGroupFilter", &C::toonGUIGroupFilter, "0"),
      flag("recursiveUpdate", &C::recursiveUpdate, "0"),
      flag("geenTabbedBrowsing", &C::geenTabbedBrowsing, "0"),
      flag("toonWatcherNotifications", &C::toonWatcherNotifications, "1"),
      flag("openPostinfoOpAchtergrond", &C::openPostinfoOpAchtergrond, "1"),
      {"ratingScale", Kind::number, &C::ratingScale, 1, max_number, "100"},
      flag("toonIRCClient", &C::toonIRCClient, "1"),
      {"ircAltNickname", Kind::text, &C::ircAltNickname, 0, 0, ""},
      {"ircNickname", Kind::text, &C::ircNickname},
      flag("groupFilter", &C::groupFilter, "0"),
      {"groupFilterList", Kind::newsgroups, &C::groupFilterList},
      {"watchlist", Kind::posting_ids, &C::watchlist},
      {"watcher", Kind::texts, &C::watcher},
      {"badword", Kind::texts, &C::badword},
      {"statusFilter", Kind::states, &C::statusFilter},
  };
}

template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}  // namespace

const std::vector<Setting> &all_settings() {
  static const std::vector<Setting> settings = make_settings();
  return settings;
}

const Setting &setting_called(const std::string &key) {
  for (const Setting &setting : all_settings())
    if (key == setting.key)
      return setting;
  throw usage_error("unknown setting \"" + key + "\"; see velkorctl config list");
}

bool holds_list(const Setting &setting) noexcept {
  return std::holds_alternative<ListMember>(setting.member);
}

std::vector<std::string> values_of(const Setting &setting, const ZoxConfig &config) {
  std::vector<std::string> values;
  std::visit(Overloaded{[&](TextMember member) {
                          if (const GString *text = config.*member)
                            values.emplace_back(text->str);
                        },
                        [&](ListMember member) {
                          for (const GSList *cell = config.*member; cell; cell = cell->next)
                            values.push_back(setting.kind == Kind::states
                                                 ? std::to_string(GPOINTER_TO_INT(cell->data))
                                                 : static_cast<GString *>(cell->data)->str);
                        },
                        [&](auto member) { values.push_back(std::to_string(config.*member)); }},
             setting.member);
  return values;
}

void assign(const Setting &setting, ZoxConfig &config, const std::vector<std::string> &values) {
  if (setting.kind == Kind::given_text || setting.kind == Kind::given_number)
    throw usage_error(std::string(setting.key) +
                      " comes from the server with every update and cannot be set");
  if (values.size() > 1 && !holds_list(setting))
    throw usage_error(std::string(setting.key) + " takes one value");
  std::visit(Overloaded{[&](TextMember member) { assign_text(setting, config.*member, values); },
                        [&](ListMember member) {
                          if (setting.kind == Kind::states)
                            assign_states(config.*member, values);
                          else
                            assign_texts(setting, config.*member, values);
                        },
                        [&](auto member) { assign_number(setting, config.*member, values); }},
             setting.member);
}

}  // namespace velkor::ctl
