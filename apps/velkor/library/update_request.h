/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a request for an update tells, as records for the window. */
#ifndef VELKOR_APP_LIBRARY_UPDATE_REQUEST_H
#define VELKOR_APP_LIBRARY_UPDATE_REQUEST_H

#include <cstdint>
#include <unordered_set>

#include <velkor/zox_request.h>

#include "model/update_state.h"

namespace velkor::app {

UpdateProgress progress_of(const ZoxRequestProgress &progress);

/** How it ended; to be called in its `done`. */
UpdateOutcome outcome_of(const ZoxRequest &request);

/** The ids of the postings that a watcher matched. */
std::unordered_set<std::int32_t> hits_of(const ZoxRequest &request);

}  // namespace velkor::app

#endif
