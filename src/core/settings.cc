/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/settings.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>
#include <variant>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::settings {
namespace {

enum class Empty { none, kept };        // what an empty value in the file becomes
enum class Unset { skipped, written };  // what happens to the line of a field without a text

/** What a row says about its field: which one, its default, and how it differs from its kind. */
struct Text {
  ZoxString *ZoxConfig::*member;
  const char *initial;
  Empty empty;
  Unset unset;
};
struct Time {
  gint64 ZoxConfig::*member;
};
struct Count {
  guint32 ZoxConfig::*member;
};
struct Number {
  gint32 ZoxConfig::*member;
  gint32 initial;
};
struct SplitList {
  ZoxSplittedList *ZoxConfig::*member;
};
struct TextList {
  GSList *ZoxConfig::*member;
};
struct NumberList {
  GSList *ZoxConfig::*member;
};

struct Setting {
  const char *key;
  std::variant<Text, Time, Count, Number, SplitList, TextList, NumberList> field;
};

/** A text of the account or the proxy: absent unless it has at least one character. */
constexpr Text optional(ZoxString *ZoxConfig::*member) noexcept {
  return {member, nullptr, Empty::none, Unset::skipped};
}

using C = ZoxConfig;

constexpr std::array table{
    Setting{"username", optional(&C::username)},
    Setting{"password", optional(&C::password)},
    Setting{"proxyHost", optional(&C::proxyHost)},
    Setting{"proxyPort", optional(&C::proxyPort)},
    Setting{"proxyUser", optional(&C::proxyUser)},
    Setting{"proxyPassword", optional(&C::proxyPassword)},
    Setting{"htmlRenderer", Text{&C::htmlRenderer, "", Empty::kept, Unset::written}},
    Setting{"lastCheck", Time{&C::lastCheck}},
    Setting{"prevCheck", Time{&C::prevCheck}},
    Setting{"ledenCount", Count{&C::ledenCount}},
    Setting{"usersOnline", Text{&C::usersOnline, "Onbekend", Empty::none, Unset::written}},
    Setting{"updatenBijOpstarten", Number{&C::updatenBijOpstarten, 1}},
    Setting{"toonInfoBijEenZoekresultaat", Number{&C::toonInfoBijEenZoekresultaat, 1}},
    Setting{"startMaximized", Number{&C::startMaximized, 1}},
    Setting{"toonStatusBijLaden", Number{&C::toonStatusBijLaden, 1}},
    Setting{"toonCategoriseerdeLijstBijKnopNieuw",
            Number{&C::toonCategoriseerdeLijstBijKnopNieuw, 1}},
    Setting{"verwijderPostsNaXDagen", Number{&C::verwijderPostsNaXDagen, 1}},
    Setting{"trayIcon", Number{&C::trayIcon, 1}},
    Setting{"gebruikFontFamily", Number{&C::gebruikFontFamily, 1}},
    Setting{"toonGUIGroupFilter", Number{&C::toonGUIGroupFilter, 0}},
    Setting{"recursiveUpdate", Number{&C::recursiveUpdate, 0}},
    Setting{"geenTabbedBrowsing", Number{&C::geenTabbedBrowsing, 0}},
    Setting{"toonWatcherNotifications", Number{&C::toonWatcherNotifications, 1}},
    Setting{"openPostinfoOpAchtergrond", Number{&C::openPostinfoOpAchtergrond, 1}},
    Setting{"ratingScale", Number{&C::ratingScale, 100}},
    Setting{"toonIRCClient", Number{&C::toonIRCClient, 1}},
    Setting{"ircAltNickname", Text{&C::ircAltNickname, "", Empty::kept, Unset::written}},
    Setting{"ircNickname", Text{&C::ircNickname, nullptr, Empty::kept, Unset::skipped}},
    Setting{"groupFilter", Number{&C::groupFilter, 0}},
    Setting{"groupFilterList", SplitList{&C::groupFilterList}},
    Setting{"watchlist", TextList{&C::watchlist}},
    Setting{"watcher", TextList{&C::watcher}},
    Setting{"badword", TextList{&C::badword}},
    Setting{"statusFilter", NumberList{&C::statusFilter}},
};

/** Calls `action` with the row's kind for every row. */
template <typename Action>
void for_each_field(const Action &action) noexcept {
  for (const Setting &setting : table)
    std::visit([&](const auto &field) { action(setting.key, field); }, setting.field);
}

void write_line(GString *text, const char *key, const char *value) noexcept {
  g_string_append_printf(text, "%s=%s\n", key, value);
}

void write_line(GString *text, const char *key, gint32 value) noexcept {
  g_string_append_printf(text, "%s=%d\n", key, value);
}

// What is done with the fields, a kind at a time.
struct Defaults {
  ZoxConfig &config;
  void operator()(const char *, const Text &field) const noexcept {
    config.*field.member = zox_string_new(field.initial);
  }
  void operator()(const char *, const Number &field) const noexcept {
    config.*field.member = field.initial;
  }
  void operator()(const char *, const auto &) const noexcept {}
};

struct Reader {
  ZoxConfig &config;
  const char *value;
  void operator()(const Text &field) const noexcept {
    const bool none = *value == '\0' && field.empty == Empty::none;
    replace_string(config.*field.member, none ? nullptr : g_string_new(value));
  }
  void operator()(const Time &field) const noexcept {
    config.*field.member = std::strtoll(value, nullptr, 10);
  }
  void operator()(const Count &field) const noexcept {
    config.*field.member = static_cast<guint32>(leading_integer(value));
  }
  void operator()(const Number &field) const noexcept {
    config.*field.member = leading_integer(value);
  }
  void operator()(const SplitList &field) const noexcept {
    zox_splitted_list_free(&(config.*field.member));
    config.*field.member = zox_splitted_list_split(value);
  }
  void operator()(const TextList &field) const noexcept { add(field.member, g_string_new(value)); }
  void operator()(const NumberList &field) const noexcept {
    add(field.member, GINT_TO_POINTER(leading_integer(value)));
  }

private:
  void add(GSList *ZoxConfig::*member, gpointer item) const noexcept {
    config.*member = g_slist_prepend(config.*member, item);
  }
};

struct Completion {
  ZoxConfig &config;
  void operator()(const char *, const TextList &field) const noexcept { turn(field.member); }
  void operator()(const char *, const NumberList &field) const noexcept { turn(field.member); }
  void operator()(const char *, const auto &) const noexcept {}

private:
  void turn(GSList *ZoxConfig::*member) const noexcept {
    config.*member = g_slist_reverse(config.*member);
  }
};

struct Writer {
  const ZoxConfig &config;
  GString *text;
  void operator()(const char *key, const Text &field) const noexcept {
    const char *value = chars_or_null(config.*field.member);
    if (value != nullptr || field.unset == Unset::written)
      write_line(text, key, value == nullptr ? "" : value);
  }
  void operator()(const char *key, const Time &field) const noexcept {
    write_line(text, key, static_cast<gint32>(config.*field.member));
  }
  void operator()(const char *key, const Count &field) const noexcept {
    write_line(text, key, static_cast<gint32>(config.*field.member));
  }
  void operator()(const char *key, const Number &field) const noexcept {
    write_line(text, key, config.*field.member);
  }
  void operator()(const char *key, const SplitList &field) const noexcept {
    const OwnedString stored(zox_splitted_list_concat(config.*field.member));
    write_line(text, key, stored->str);
  }
  void operator()(const char *key, const TextList &field) const noexcept {
    for (const ZoxString *item : Items<ZoxString>(config.*field.member))
      write_line(text, key, item->str);
  }
  void operator()(const char *key, const NumberList &field) const noexcept {
    for (gpointer item : Items<void>(config.*field.member))
      write_line(text, key, GPOINTER_TO_INT(item));
  }
};

struct Release {
  ZoxConfig &config;
  void operator()(const char *, const Text &field) const noexcept {
    replace_string(config.*field.member, nullptr);
  }
  void operator()(const char *, const SplitList &field) const noexcept {
    zox_splitted_list_free(&(config.*field.member));
  }
  void operator()(const char *, const TextList &field) const noexcept {
    zox_splitted_list_free(&(config.*field.member));
  }
  void operator()(const char *, const NumberList &field) const noexcept {
    g_slist_free(std::exchange(config.*field.member, nullptr));
  }
  void operator()(const char *, const auto &) const noexcept {}
};

}  // namespace

void set_defaults(ZoxConfig &config) noexcept {
  config.firstTime = 1;
  for_each_field(Defaults{config});
}

bool read(ZoxConfig &config, std::string_view key, const char *value) noexcept {
  const auto *setting =
      std::ranges::find_if(table, [&](const Setting &each) { return key == each.key; });
  if (setting == table.end())
    return false;
  std::visit(Reader{config, value}, setting->field);
  return true;
}

void complete(ZoxConfig &config) noexcept {
  for_each_field(Completion{config});
}

void write(const ZoxConfig &config, GString *text) noexcept {
  for_each_field(Writer{config, text});
}

void release(ZoxConfig &config) noexcept {
  for_each_field(Release{config});
}

}  // namespace velkor::settings
