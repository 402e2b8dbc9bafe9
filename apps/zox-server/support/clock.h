/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The time of the service: that of the machine, or pinned to a second; tests move it on. */
#ifndef ZOX_SERVER_SUPPORT_CLOCK_H
#define ZOX_SERVER_SUPPORT_CLOCK_H

#include <cstdint>
#include <ctime>
#include <optional>

namespace velkor::server {

class Clock {
public:
  /** @param pinned the second, counted since 1970, at which this clock stands still */
  explicit Clock(std::optional<std::int64_t> pinned) : pinned_(pinned) {}

  [[nodiscard]] std::int64_t now() const {
    return pinned_.value_or(std::int64_t{std::time(nullptr)}) + moved_;
  }
  void advance(std::int64_t seconds) { moved_ += seconds; }

private:
  std::optional<std::int64_t> pinned_;
  std::int64_t moved_ = 0;
};

}  // namespace velkor::server

#endif
