/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A private D-Bus session bus for one test. */
#ifndef VELKOR_TESTS_SUPPORT_PRIVATE_BUS_H
#define VELKOR_TESTS_SUPPORT_PRIVATE_BUS_H

#include <string>

#include "tests/support/child_process.h"
#include "tests/support/sandbox.h"

namespace velkor::test {

/** Runs a bus daemon and sets DBUS_SESSION_BUS_ADDRESS to its address for its own lifetime. */
class PrivateBus {
public:
  /** `policy` is added to a configuration that allows everything. */
  explicit PrivateBus(const std::string &policy = "");

  /** Stops the bus while clients are still connected. */
  void stop();

private:
  TemporaryDirectory directory_;
  ChildProcess daemon_;
  EnvironmentVariable address_;
};

}  // namespace velkor::test

#endif
