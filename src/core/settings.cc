/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/settings.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <utility>
#include <variant>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "core/setting_line.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::settings {
namespace {

enum class Empty { none, kept };        // what an empty value in the file becomes
enum class Unset { skipped, written };  // what happens to the line of a field without a text
/** Whether a value may lose its end. Part of a number is another number. */
enum class Length { cuttable, fixed };

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
  Length length;
  Empty empty;
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
    Setting{"watchlist", TextList{&C::watchlist, Length::fixed, Empty::kept}},
    Setting{"watcher", TextList{&C::watcher, Length::cuttable, Empty::kept}},
    // An empty bad word would be found in every title.
    Setting{"badword", TextList{&C::badword, Length::cuttable, Empty::none}},
    Setting{"statusFilter", NumberList{&C::statusFilter}},
};

/** Calls `action` with the row's kind for every row. */
template <typename Action>
void for_each_field(const Action &action) noexcept {
  for (const Setting &setting : table)
    std::visit([&](const auto &field) { action(setting.key, field); }, setting.field);
}

void write_line(GString *text, const char *key, std::string_view value) noexcept {
  g_string_append_printf(text, "%s=%.*s\n", key, static_cast<int>(value.size()), value.data());
}

void write_line(GString *text, const char *key, gint32 value) noexcept {
  g_string_append_printf(text, "%s=%d\n", key, value);
}

void warn_left_out(const char *key) noexcept {
  g_warning("zox_config_save(): a value of %s does not fit on one line and is left out", key);
}

/**
 * The value as its line holds it, so that no part of it is read as another line; nullopt when
 * nothing of it can be kept. A value that fits is kept to the byte.
 */
std::optional<std::string_view> on_one_line(const char *key, std::string_view value,
                                            Length length) noexcept {
  const std::string_view printable = before_control(value);
  const std::string_view kept = cut(printable, room_for_value(key));
  if (length == Length::fixed && kept.size() < printable.size()) {
    warn_left_out(key);
    return std::nullopt;
  }
  if (kept.size() == value.size())
    return value;
  if (!stripped(value.substr(kept.size())).empty())
    g_warning("zox_config_save(): a value of %s does not fit on one line and is shortened", key);
  const std::string_view rest = stripped(kept);
  return rest.empty() ? std::nullopt : std::optional(rest);
}

/** The items that fit on the line together. */
OwnedString split_list_on_one_line(const char *key, const GSList *list) noexcept {
  ListBuilder<ZoxString, free_string> items;
  std::size_t room = room_for_value(key) - 1;  // for the "|" in front
  bool all = true;
  for (const ZoxString *item : Items<ZoxString>(list)) {
    const auto kept = on_one_line(key, view_of(item), Length::fixed);
    if (kept && kept->size() < room) {
      room -= kept->size() + 1;
      items.append(g_string_new_len(kept->data(), static_cast<gssize>(kept->size())));
    } else if (kept) {
      all = false;
    }
  }
  if (!all)
    warn_left_out(key);
  return OwnedString(zox_splitted_list_concat(items.list()));
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
    const ZoxString *value = config.*field.member;
    const auto kept =
        value == nullptr ? std::nullopt : on_one_line(key, view_of(value), Length::cuttable);
    if (kept || field.unset == Unset::written)
      write_line(text, key, kept.value_or(""));
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
    const OwnedString stored = split_list_on_one_line(key, config.*field.member);
    write_line(text, key, view_of(stored.get()));
  }
  void operator()(const char *key, const TextList &field) const noexcept {
    for (const ZoxString *item : Items<ZoxString>(config.*field.member)) {
      const auto kept = on_one_line(key, view_of(item), field.length);
      if (kept && !(stripped(*kept).empty() && field.empty == Empty::none))
        write_line(text, key, *kept);
    }
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
