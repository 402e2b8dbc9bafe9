/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/update_state.h"

#include <algorithm>

namespace velkor::app {

double UpdateProgress::fraction() const noexcept {
  if (saving)
    return 1;
  if (dump < 1 || dumps < 1)
    return 0;
  const double of_this =
      expected > 0 ? static_cast<double>(received) / static_cast<double>(expected) : 0;
  return std::clamp((dump - 1 + std::clamp(of_this, 0.0, 1.0)) / dumps, 0.0, 1.0);
}

}  // namespace velkor::app
