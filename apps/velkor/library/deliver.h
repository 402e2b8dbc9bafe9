/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The way of an answer to the main thread. */
#ifndef VELKOR_APP_LIBRARY_DELIVER_H
#define VELKOR_APP_LIBRARY_DELIVER_H

#include <utility>

#include "library/cancellation.h"
#include "library/main_loop.h"

namespace velkor::app {

/** Lets the main thread call `function` with the answer, if it is still wanted by then. */
template <typename Function, typename Answer>
void deliver(const SharedCancellation &wanted, const Function &function, Answer answer) {
  run_on_main_loop([wanted, function, answer = std::move(answer)]() mutable {
    if (!wanted->cancelled())
      function(std::move(answer));
  });
}

}  // namespace velkor::app

#endif
