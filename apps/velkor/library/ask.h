/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A question to the library with one answer. */
#ifndef VELKOR_APP_LIBRARY_ASK_H
#define VELKOR_APP_LIBRARY_ASK_H

#include <utility>

#include "library/deliver.h"
#include "library/session.h"

namespace velkor::app {

/**
 * Calls `question` on the core's thread, and `done` with what it returned on the main thread,
 * unless the answer is no longer wanted.
 */
template <typename Question, typename Done>
SharedCancellation ask(Session &session, Question question, Done done) {
  return session.run([question = std::move(question), done = std::move(done)](
                         GMainContext * /*context*/, const SharedCancellation &wanted) {
    deliver(wanted, done, question());
  });
}

}  // namespace velkor::app

#endif
