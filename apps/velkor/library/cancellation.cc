/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/cancellation.h"

#include <utility>

namespace velkor::app {

void Cancellation::cancel() {
  const std::lock_guard guard(lock_);
  cancelled_ = true;
  if (stop_)
    stop_();
}

bool Cancellation::cancelled() const {
  const std::lock_guard guard(lock_);
  return cancelled_;
}

void Cancellation::set_stop(std::function<void()> stop) {
  const std::lock_guard guard(lock_);
  stop_ = std::move(stop);
  if (cancelled_)
    stop_();
}

}  // namespace velkor::app
