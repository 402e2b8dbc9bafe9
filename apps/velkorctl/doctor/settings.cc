/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The settings: the account, and numbers out of their range. */
#include "velkorctl/settings.h"

#include <velkor/zox_app_core.h>

#include "support/numbers.h"
#include "velkorctl/doctor/examination.h"
#include "velkorctl/setting_words.h"

namespace velkor::ctl::doctor {
namespace {

bool is_set(const char *key) {
  const std::vector<std::string> values = values_of(setting_called(key));
  return !values.empty() && !values.front().empty();
}

bool in_range(const ZoxSetting &setting, const std::string &value) {
  const auto number = whole_number(value);
  return setting.highest == 0 || value.empty() ||
         (number && *number >= setting.lowest && *number <= setting.highest);
}

Findings check_ranges() {
  Findings findings;
  for (const ZoxSetting *setting : all_settings())
    for (const std::string &value : values_of(*setting))
      if (setting->readOnly == 0 && !in_range(*setting, value))
        findings.push_back({"settings", std::string(setting->key) + " is " + value,
                            "set it to " + possible_values(*setting) +
                                " with velkorctl config set " + setting->key});
  return findings;
}

}  // namespace

Findings check_settings() {
  Findings findings = check_ranges();
  if (findings.empty())
    findings.push_back({"settings", "all values are within their ranges"});
  if (is_set("username") && is_set("password"))
    findings.push_back({"account", "user name and password are set"});
  else
    findings.push_back({"account",
                        is_set("username") ? "no password is set" : "no user name is set",
                        "run velkorctl account set, or velkorctl signup for a new account"});
  return findings;
}

}  // namespace velkor::ctl::doctor
