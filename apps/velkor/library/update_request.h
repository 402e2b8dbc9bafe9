/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a request for an update tells, as records for the window. */
#ifndef VELKOR_APP_LIBRARY_UPDATE_REQUEST_H
#define VELKOR_APP_LIBRARY_UPDATE_REQUEST_H

#include <vector>

#include <velkor/zox_request.h>

#include "model/update_state.h"
#include "model/watcher_hits.h"

namespace velkor::app {

UpdateProgress progress_of(const ZoxRequestProgress &progress);

/** How it ended, without what the watchers matched; to be called in its `done`. */
UpdateOutcome outcome_of(const ZoxRequest &request);

/** The postings that a watcher matched. */
std::vector<WatcherHit> hits_of(const ZoxRequest &request);

}  // namespace velkor::app

#endif
