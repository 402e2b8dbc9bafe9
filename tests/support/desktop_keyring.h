/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A keyring of the desktop for one test, unlocked and empty, on a session bus of its own. */
#ifndef VELKOR_TESTS_SUPPORT_DESKTOP_KEYRING_H
#define VELKOR_TESTS_SUPPORT_DESKTOP_KEYRING_H

#include <optional>

#include "tests/support/child_process.h"
#include "tests/support/private_bus.h"

namespace velkor::test {

class DesktopKeyring {
public:
  DesktopKeyring();

  /** Ends the keyring; the bus stays. */
  void stop();

private:
  TemporaryDirectory home_;
  PrivateBus bus_;
  std::optional<ChildProcess> daemon_;
};

}  // namespace velkor::test

#endif
