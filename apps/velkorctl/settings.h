/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The keys of "velkor.conf" as text: what they hold, and which values they take. */
#ifndef VELKORCTL_SETTINGS_H
#define VELKORCTL_SETTINGS_H

#include <string>
#include <variant>
#include <vector>

#include <velkor/zox_config.h>

namespace velkor::ctl {

struct Setting {
  enum class Kind {
    text,
    /** A text that is only shown when asked for by name, and never taken from an argument. */
    secret,
    /** A decimal number that is kept as text. */
    number_text,
    number,
    texts,
    posting_ids,
    newsgroups,
    states,
    /** A text or number that the server gives. */
    given_text,
    given_number,
  };
  using Member = std::variant<GString * ZoxConfig::*, GSList * ZoxConfig::*, gint32 ZoxConfig::*,
                              guint32 ZoxConfig::*, gint64 ZoxConfig::*>;

  const char *key;
  Kind kind;
  Member member;
  gint64 lowest = 0;
  gint64 highest = 0;
  /** The value that an emptied text or number has; null for no text. */
  const char *default_value = nullptr;
};

/** Every setting, in the order of the file. */
const std::vector<Setting> &all_settings();

/** Throws a usage Failure when there is no such key. */
const Setting &setting_called(const std::string &key);

bool holds_list(const Setting &setting) noexcept;

/** The value or the items of the list; nothing when it is not set. */
std::vector<std::string> values_of(const Setting &setting, const ZoxConfig &config);

/**
 * Gives the setting these values; none returns it to its default. Throws a usage Failure, leaving
 * the setting as it was, when the file could not hold them or they are out of range.
 */
void assign(const Setting &setting, ZoxConfig &config, const std::vector<std::string> &values);

}  // namespace velkor::ctl

#endif
