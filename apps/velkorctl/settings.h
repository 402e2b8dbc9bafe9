/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The settings of "velkor.conf" as text: their keys, their kinds and their values. */
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
    /** A password: printed only on request and never given as an argument. */
    secret,
    /** A decimal number that is kept as text. */
    number_text,
    number,
    texts,
    posting_ids,
    newsgroups,
    states,
    /** A text or number that the server sends; it cannot be changed here. */
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
  /** The value of a text or number that is reset; null for no text. */
  const char *default_value = nullptr;
};

/** Every setting, in the order of the file. */
const std::vector<Setting> &all_settings();

/** Throws a usage Failure when there is no such key. */
const Setting &setting_called(const std::string &key);

bool holds_list(const Setting &setting) noexcept;

/** The value, or the items of the list; empty when the setting is not set. */
std::vector<std::string> values_of(const Setting &setting, const ZoxConfig &config);

/**
 * Gives the setting these values; no values reset it to its default. Throws a usage Failure and
 * leaves the setting unchanged when a value is out of range or the file could not hold it.
 */
void assign(const Setting &setting, ZoxConfig &config, const std::vector<std::string> &values);

}  // namespace velkor::ctl

#endif
