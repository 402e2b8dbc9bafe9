/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A question to the library with one answer. */
#ifndef VELKOR_APP_LIBRARY_ASK_H
#define VELKOR_APP_LIBRARY_ASK_H

#include <utility>

#include "library/main_loop.h"
#include "library/session.h"

namespace velkor::app {

/**
 * Calls `question` on that thread, and `done` with what it returned on the main thread, unless the
 * answer is no longer wanted.
 */
template <typename Question, typename Done>
SharedCancellation ask(Session &session, Session::Thread thread, Question question, Done done) {
  return session.run(thread, [question = std::move(question),
                              done = std::move(done)](const SharedCancellation &wanted) {
    run_on_main_loop([wanted, done, answer = question()] {
      if (!wanted->cancelled())
        done(answer);
    });
  });
}

}  // namespace velkor::app

#endif
