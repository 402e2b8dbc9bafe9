/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The lines of velkor.conf. Whatever a value holds, it fills one line. */
#include <optional>

#include <velkor/zox_splitted_list.h>

#include "core/setting_line.h"
#include "core/settings.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::settings {
namespace {

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
 * nothing of it can be kept. A value that fits is kept to the byte. Part of a number would be
 * another number, so that one that is too long is left out.
 */
std::optional<std::string_view> on_one_line(const ZoxSetting &facts,
                                            std::string_view value) noexcept {
  const std::string_view printable = before_control(value);
  const std::string_view kept = cut(printable, room_for_value(facts.key));
  if (has_range(facts) && kept.size() < printable.size()) {
    warn_left_out(facts.key);
    return std::nullopt;
  }
  if (kept.size() == value.size())
    return value;
  if (!stripped(value.substr(kept.size())).empty())
    g_warning("zox_config_save(): a value of %s does not fit on one line and is shortened",
              facts.key);
  const std::string_view rest = stripped(kept);
  return rest.empty() ? std::nullopt : std::optional(rest);
}

/** The items that fit on the line together. */
OwnedString split_list_on_one_line(const ZoxSetting &facts, const GSList *list) noexcept {
  ListBuilder<ZoxString, free_string> items;
  std::size_t available = room_for_value(facts.key) - 1;  // for the "|" in front
  bool all = true;
  for (const ZoxString *item : Items<ZoxString>(list)) {
    const auto kept = on_one_line(facts, view_of(item));
    if (kept && kept->size() < available) {
      available -= kept->size() + 1;
      items.append(g_string_new_len(kept->data(), static_cast<gssize>(kept->size())));
    } else if (kept) {
      all = false;
    }
  }
  if (!all)
    warn_left_out(facts.key);
  return OwnedString(zox_splitted_list_concat(items.list()));
}

struct Writer {
  const ZoxConfig &config;
  const ZoxSetting &facts;
  GString *text;
  void operator()(const Text &field) const noexcept {
    const ZoxString *value = config.*field.member;
    const auto kept = value == nullptr ? std::nullopt : on_one_line(facts, view_of(value));
    if (kept || field.unset == Unset::written)
      write_line(text, facts.key, kept.value_or(""));
  }
  void operator()(const Time &field) const noexcept {
    write_line(text, facts.key, static_cast<gint32>(config.*field.member));
  }
  void operator()(const Count &field) const noexcept {
    write_line(text, facts.key, static_cast<gint32>(config.*field.member));
  }
  void operator()(const Number &field) const noexcept {
    write_line(text, facts.key, config.*field.member);
  }
  void operator()(const SplitList &field) const noexcept {
    const OwnedString stored = split_list_on_one_line(facts, config.*field.member);
    write_line(text, facts.key, view_of(stored.get()));
  }
  void operator()(const TextList &field) const noexcept {
    for (const ZoxString *item : Items<ZoxString>(config.*field.member)) {
      const auto kept = on_one_line(facts, view_of(item));
      if (kept && !(stripped(*kept).empty() && field.empty == Empty::none))
        write_line(text, facts.key, *kept);
    }
  }
  void operator()(const NumberList &field) const noexcept {
    for (gpointer item : Items<void>(config.*field.member))
      write_line(text, facts.key, GPOINTER_TO_INT(item));
  }
};

}  // namespace

void write(const ZoxConfig &config, GString *text) noexcept {
  for (const Setting &setting : table())
    std::visit(Writer{config, setting.facts, text}, setting.field);
}

}  // namespace velkor::settings
