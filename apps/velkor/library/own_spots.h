/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Asks the server about the spots that the user has placed. Threads: the main one. */
#ifndef VELKOR_APP_LIBRARY_OWN_SPOTS_H
#define VELKOR_APP_LIBRARY_OWN_SPOTS_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <glib.h>

#include "library/session.h"
#include "model/own_spot.h"

namespace velkor::app {

struct OwnSpotsReply {
  std::vector<OwnSpot> spots{};  // the newest first
  std::string failure{};         // why nothing is known; empty on success
};

using OwnSpotsFunction = std::function<void(const OwnSpotsReply &)>;

SharedCancellation fetch_own_spots(Session &session, OwnSpotsFunction done);

/** Receives why nothing came of a request; the empty text on success. */
using FailureFunction = std::function<void(const std::string &failure)>;

/** Asks the server to refresh one of the spots. */
SharedCancellation refresh_own_spot(Session &session, std::int32_t id, FailureFunction done);

/**
 * The spots of an overview, the newest first. Threads: any.
 * @param overview  of ZoxMyzoxPost
 */
std::vector<OwnSpot> own_spots_of(const GSList *overview);

}  // namespace velkor::app

#endif
