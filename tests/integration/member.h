/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The shared library of a member who may log in at the servers that a test starts. */
#ifndef VELKOR_TESTS_INTEGRATION_MEMBER_H
#define VELKOR_TESTS_INTEGRATION_MEMBER_H

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include <velkor/zox_types.h>

#include "support/opened_core.h"
#include "tests/support/sandbox.h"

namespace velkor::test {

/** What a request brought, and what is known of its failure. */
struct Answer {
  ZoxErrorCode code = 0;
  std::string text;
  int transfer_result = 0;
  bool proxy_failed = false;
  std::string reason;
};

class MemberTest : public ::testing::Test {
protected:
  MemberTest();
  ~MemberTest() override;

  static void use_hosts(const std::string &main, const std::string &dumps);
  /** Changes a setting. */
  static void set(const char *key, const std::string &value);
  /** Asks for a path with the member's credentials. */
  static Answer ask(const char *path);
  /** One update; the code that it ends with. */
  static ZoxErrorCode update();

  Sandbox sandbox;

private:
  EnvironmentVariable display_{"DISPLAY", std::nullopt};
  EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", sandbox.home().string()};
  EnvironmentVariable bus_{"DBUS_SESSION_BUS_ADDRESS",
                           "unix:path=" + (sandbox.home() / "absent").string()};
  EnvironmentVariable authorities_{"VELKOR_CA_FILE", std::nullopt};
  std::optional<OpenedCore> core_;
};

}  // namespace velkor::test

#endif
