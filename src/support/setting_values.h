/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the settings of the library hold, for programs. */
#ifndef VELKOR_SUPPORT_SETTING_VALUES_H
#define VELKOR_SUPPORT_SETTING_VALUES_H

#include <optional>
#include <string>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_settings.h>
#include <velkor/zox_splitted_list.h>

#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {

/** The value, or the items of the list, as the file holds them; empty when nothing is set. */
inline std::vector<std::string> values_of(const ZoxSetting &setting) {
  std::vector<std::string> values;
  if (const OwnedString value{zox_settings_get(setting.key)})
    values.emplace_back(view_of(value.get()));
  ZoxSplittedList *items = zox_settings_get_list(setting.key);
  for (const ZoxString *item : Items<ZoxString>(items))
    values.emplace_back(view_of(item));
  zox_splitted_list_free(&items);
  return values;
}

/** The age in days up to which an update keeps postings; nothing when the setting holds none. */
inline std::optional<gint32> age_limit_days() {
  const ZoxSetting *setting = zox_settings_find("verwijderPostsNaXDagen");
  const gint32 choice = core->config->verwijderPostsNaXDagen;
  if (setting == nullptr || choice < 0 || choice > setting->highest)
    return std::nullopt;
  return setting->choices[choice];
}

}  // namespace velkor

#endif
