/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The settings of "velkor.conf": their values as the file holds them, and changing them. */
#ifndef VELKORCTL_SETTINGS_H
#define VELKORCTL_SETTINGS_H

#include <string>
#include <vector>

#include <velkor/zox_settings.h>

#include "support/setting_values.h"

namespace velkor::ctl {

/** Every setting, in the order of the file. */
std::vector<const ZoxSetting *> all_settings();

/** Throws a usage Failure when there is no such key. */
const ZoxSetting &setting_called(const std::string &key);

bool holds_list(const ZoxSetting &setting) noexcept;

/** A password: printed only on request and never given as an argument. */
bool is_secret(const ZoxSetting &setting) noexcept;

/**
 * Gives the setting these values, in the words of setting_words.h; no values reset it to its
 * default. Throws a usage Failure and leaves the setting unchanged when a value is out of range or
 * the file could not hold it.
 */
void assign(const ZoxSetting &setting, const std::vector<std::string> &values);

}  // namespace velkor::ctl

#endif
