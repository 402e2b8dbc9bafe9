/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The table of the settings: one row for each key that velkor.conf may hold, in the order in which
 * they are saved. It serves the defaults, loading, saving, freeing and the access by key alike.
 */
#ifndef VELKOR_CORE_SETTINGS_TABLE_H
#define VELKOR_CORE_SETTINGS_TABLE_H

#include <array>
#include <span>
#include <string_view>
#include <variant>

#include <velkor/zox_config.h>
#include <velkor/zox_settings.h>

namespace velkor::settings {

enum class Empty { none, kept };        // what an empty value in the file becomes
enum class Unset { skipped, written };  // what happens to the line of a field without a text

/** Which field of the record a row stands for, and how it differs from others of its kind. */
struct Text {
  ZoxString *ZoxConfig::*member;
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
};
struct SplitList {
  ZoxSplittedList *ZoxConfig::*member;
};
struct TextList {
  GSList *ZoxConfig::*member;
  Empty empty;  // kept in the list when it is read; `none` is not written
};
struct NumberList {
  GSList *ZoxConfig::*member;
};

struct Setting {
  ZoxSetting facts;
  std::variant<Text, Time, Count, Number, SplitList, TextList, NumberList> field;
};

/** The ages in days that verwijderPostsNaXDagen chooses from. */
inline constexpr std::array<gint32, 7> retention_days{7, 14, 21, 28, 35, 42, 49};

std::span<const Setting> table() noexcept;

/** The row of the key; null when there is none. */
const Setting *find(std::string_view key) noexcept;

inline bool has_range(const ZoxSetting &facts) noexcept {
  return facts.highest != 0;
}

}  // namespace velkor::settings

#endif
