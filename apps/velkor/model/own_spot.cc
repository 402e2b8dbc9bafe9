/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/own_spot.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace velkor::app {

std::vector<OwnSpot> newest_first(std::vector<OwnSpot> spots) {
  std::ranges::sort(spots, std::greater{},
                    [](const OwnSpot &spot) { return std::pair(spot.stamp, spot.id); });
  return spots;
}

}  // namespace velkor::app
