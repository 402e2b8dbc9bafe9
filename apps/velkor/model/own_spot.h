/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The spots that the user has placed, as the server knows them. */
#ifndef VELKOR_APP_MODEL_OWN_SPOT_H
#define VELKOR_APP_MODEL_OWN_SPOT_H

#include <cstdint>
#include <string>
#include <vector>

namespace velkor::app {

struct OwnSpot {
  std::int32_t id = 0;
  std::string title{};
  std::string status{};    // in words
  std::string category{};  // likewise
  std::int64_t stamp = 0;
  std::uint32_t kudos = 0;
  std::uint32_t reactions = 0;
  bool can_edit = false;

  bool operator==(const OwnSpot &) const = default;
};

/** The spots with the newest first; of those of one moment the one with the highest number. */
std::vector<OwnSpot> newest_first(std::vector<OwnSpot> spots);

}  // namespace velkor::app

#endif
