/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One request of the library, from its start to its end. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_REQUEST_H
#define VELKOR_APP_LIBRARY_REQUEST_H

#include <functional>

#include <velkor/zox_request.h>

#include "library/call.h"
#include "library/cancellation.h"

namespace velkor::app {

using RequestEnd = std::function<void(const ZoxRequest &)>;

/** What is called in the course of a request, on its context. */
struct RequestFunctions {
  std::function<void(const ZoxRequestProgress &)> progress{};
  RequestEnd done{};
};

/** Starts a request with options; one of the functions of zox_request.h with its arguments. */
using RequestStart = std::function<ZoxRequest *(const ZoxRequestOptions *)>;

/**
 * Starts a request that `wanted` cancels.
 * @param context  where the functions are called
 */
void start_request(GMainContext *context, Cancellation &wanted, const RequestStart &start,
                   RequestFunctions functions);

/** Calls `end` only for a request that was not cancelled. */
RequestEnd unless_cancelled(RequestEnd end);

/** How a request ended that was not cancelled; to be called in its `done`. */
CallResult result_of(const ZoxRequest &request);

}  // namespace velkor::app

#endif
