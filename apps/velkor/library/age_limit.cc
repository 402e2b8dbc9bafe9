/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/age_limit.h"

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_settings.h>

namespace velkor::app {

std::optional<std::int32_t> age_limit_days() {
  const ZoxSetting *setting = zox_settings_find("verwijderPostsNaXDagen");
  const std::int32_t choice = core->config->verwijderPostsNaXDagen;
  if (setting == nullptr || choice < 0 || choice > setting->highest)
    return std::nullopt;
  return setting->choices[choice];
}

}  // namespace velkor::app
