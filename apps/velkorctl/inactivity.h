/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Notices that nothing arrives any more, so that a silent server keeps no command for ever. */
#ifndef VELKORCTL_INACTIVITY_H
#define VELKORCTL_INACTIVITY_H

#include <chrono>
#include <cstdint>

namespace velkor::ctl {

class Inactivity {
public:
  using Clock = std::chrono::steady_clock;

  /** @param limit  how long a transfer may bring nothing; 0 for any time */
  constexpr explicit Inactivity(std::chrono::seconds limit) noexcept : limit_(limit) {}

  [[nodiscard]] std::chrono::seconds limit() const noexcept { return limit_; }

  /**
   * To be called at least every few seconds of a transfer.
   * @param received  the bytes that the transfer has brought so far
   * @return whether it has brought nothing for longer than the limit
   */
  bool exceeded(std::int64_t received, Clock::time_point now) noexcept;

private:
  std::chrono::seconds limit_;
  std::int64_t received_ = -1;
  Clock::time_point latest_note_;
  Clock::time_point since_;
};

}  // namespace velkor::ctl

#endif
