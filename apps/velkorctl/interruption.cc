/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/interruption.h"

namespace velkor::ctl {
namespace {

volatile std::sig_atomic_t arrived = 0;

void remember(int /*signal*/) {
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
