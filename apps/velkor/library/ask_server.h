/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A request to the server with one answer. */
#ifndef VELKOR_APP_LIBRARY_ASK_SERVER_H
#define VELKOR_APP_LIBRARY_ASK_SERVER_H

#include <utility>

#include "library/deliver.h"
#include "library/request.h"
#include "library/session.h"

namespace velkor::app {

/**
 * Starts a request and calls `answer` with it on the core's thread at its end, and `done` with what
 * that returned on the main thread, unless the request was cancelled.
 */
template <typename Answer, typename Done>
SharedCancellation ask_server(Session &session, RequestStart start, Answer answer, Done done) {
  return session.run([start = std::move(start), answer = std::move(answer), done = std::move(done)](
                         GMainContext *context, const SharedCancellation &wanted) {
    const auto end = [wanted, answer, done](const ZoxRequest &request) {
      deliver(wanted, done, answer(request));
    };
    start_request(context, *wanted, start, {.done = unless_cancelled(end)});
  });
}

}  // namespace velkor::app

#endif
