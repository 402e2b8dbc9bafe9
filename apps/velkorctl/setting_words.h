/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The values of settings in words: "yes" for 1, "28 days" for the number of that choice, the names
 * of states and newsgroups, dates for seconds since 1970.
 */
#ifndef VELKORCTL_SETTING_WORDS_H
#define VELKORCTL_SETTING_WORDS_H

#include <string>
#include <vector>

#include <velkor/zox_settings.h>

namespace velkor::ctl {

/**
 * The values as the file holds them. What is already in that form stays as it is; the library
 * checks it. Throws a usage Failure that names the possible values for any other word.
 */
std::vector<std::string> stored_forms(const ZoxSetting &setting,
                                      const std::vector<std::string> &values);

/** What a value of the file stands for; empty when it says so itself. */
std::string meaning_of(const ZoxSetting &setting, const std::string &value);

/** The value and, in brackets, its meaning when there is one. */
std::string with_meaning(const ZoxSetting &setting, const std::string &value);

/** The values that the setting can be given, such as "yes or no". */
std::string possible_values(const ZoxSetting &setting);

/** The default in words, such as "14 days". */
std::string default_in_words(const ZoxSetting &setting);

}  // namespace velkor::ctl

#endif
