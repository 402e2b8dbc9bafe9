/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/interruption.h"

#include <unistd.h>

#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

volatile std::sig_atomic_t arrived = 0;

/**
 * The second request to end is granted at once, wherever the command is: what it writes is whole at
 * any moment. A hangup often comes twice, from the terminal and from the shell.
 */
void remember(int signal) {
  if (arrived != 0 && signal != SIGHUP)
    _exit(static_cast<int>(Exit::interrupted));
  arrived = 1;
}

}  // namespace

Interruption::Interruption() noexcept {
  struct sigaction action {};
  action.sa_handler = remember;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, &earlier_interrupt_);
  sigaction(SIGTERM, &action, &earlier_terminate_);
  sigaction(SIGHUP, nullptr, &earlier_hangup_);
  if (ends_on_hangup())
    sigaction(SIGHUP, &action, nullptr);
}

Interruption::~Interruption() {
  sigaction(SIGINT, &earlier_interrupt_, nullptr);
  sigaction(SIGTERM, &earlier_terminate_, nullptr);
  sigaction(SIGHUP, &earlier_hangup_, nullptr);
}

bool Interruption::ends_on_hangup() noexcept {
  struct sigaction present {};
  sigaction(SIGHUP, nullptr, &present);
  return present.sa_handler != SIG_IGN;
}

bool Interruption::requested() noexcept {
  return arrived != 0;
}

}  // namespace velkor::ctl
