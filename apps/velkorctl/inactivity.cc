/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/inactivity.h"

namespace velkor::ctl {

bool Inactivity::exceeded(std::int64_t received, Clock::time_point now) noexcept {
  // libcurl calls about once a second: behind a longer pause stands another transfer, or the
  // command was stopped for a while.
  constexpr std::chrono::seconds pause{5};
  if (received != received_ || now - latest_note_ > pause)
    since_ = now;
  received_ = received;
  latest_note_ = now;
  return limit_.count() > 0 && now - since_ > limit_;
}

}  // namespace velkor::ctl
