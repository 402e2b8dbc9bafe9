/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Catches SIGINT, SIGTERM and SIGHUP while it lives, so that a transfer can end cleanly. The second
 * SIGINT or SIGTERM ends the process at once.
 */
#ifndef VELKORCTL_INTERRUPTION_H
#define VELKORCTL_INTERRUPTION_H

#include <csignal>

namespace velkor::ctl {

class Interruption {
public:
  Interruption() noexcept;
  ~Interruption();
  Interruption(const Interruption &) = delete;
  Interruption &operator=(const Interruption &) = delete;

  /** Whether one of the signals has arrived since the process started. */
  [[nodiscard]] static bool requested() noexcept;

  /** Whether SIGHUP ends the command; started with nohup, it outlives its terminal. */
  [[nodiscard]] static bool ends_on_hangup() noexcept;

private:
  struct sigaction earlier_interrupt_ {};
  struct sigaction earlier_terminate_ {};
  struct sigaction earlier_hangup_ {};
};

}  // namespace velkor::ctl

#endif
