/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/age_limit.h"

#include "support/setting_values.h"

namespace velkor::app {

std::optional<std::int32_t> age_limit_days() {
  return velkor::age_limit_days();
}

}  // namespace velkor::app
