/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A D-Bus session bus of the test's own. */
#ifndef VELKOR_TESTS_SUPPORT_PRIVATE_BUS_H
#define VELKOR_TESTS_SUPPORT_PRIVATE_BUS_H

#include <string>

#include "tests/support/child_process.h"
#include "tests/support/sandbox.h"

namespace velkor::test {

/** Runs a bus daemon and names it in DBUS_SESSION_BUS_ADDRESS while it lives. */
class PrivateBus {
public:
  /** `policy` is added to a configuration that allows everything. */
  explicit PrivateBus(const std::string &policy = "");

  /** Ends the bus under its clients. */
  void stop();

private:
  TemporaryDirectory directory_;
  ChildProcess daemon_;
  EnvironmentVariable address_;
};

}  // namespace velkor::test

#endif
