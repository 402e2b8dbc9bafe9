/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/full_update.h"

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>

namespace velkor::app {

FullUpdate::FullUpdate()
    : last_check_(core->config->lastCheck), previous_check_(core->config->prevCheck),
      recursive_(core->config->recursiveUpdate) {
  core->config->lastCheck = 0;
  core->config->recursiveUpdate = 1;
}

/** An update that was merged has another time; what came since the last one stays new after it. */
void FullUpdate::end() const {
  const bool merged = core->config->lastCheck != 0;
  core->config->prevCheck = merged ? last_check_ : previous_check_;
  if (!merged)
    core->config->lastCheck = last_check_;
  core->config->recursiveUpdate = recursive_;
  zox_config_save();
}

}  // namespace velkor::app
