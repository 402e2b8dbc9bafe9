/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The clock by which postings age; tests put one of their own in its place. */
#ifndef VELKOR_SUPPORT_CLOCK_H
#define VELKOR_SUPPORT_CLOCK_H

#include <ctime>
#include <utility>

#include <glib.h>

namespace velkor {

/** Seconds since 1970. */
using Clock = gint64 (*)();

namespace detail {
inline Clock clock = [] { return gint64{std::time(nullptr)}; };
}  // namespace detail

inline gint64 current_time() noexcept {
  return detail::clock();
}

/** Has `clock` tell the time while it lives; only while no other thread asks. */
class ReplacedClock {
public:
  explicit ReplacedClock(Clock clock) noexcept : earlier_(std::exchange(detail::clock, clock)) {}
  ~ReplacedClock() { detail::clock = earlier_; }
  ReplacedClock(const ReplacedClock &) = delete;
  ReplacedClock &operator=(const ReplacedClock &) = delete;

private:
  Clock earlier_;
};

}  // namespace velkor

#endif
