/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A core whose servers are a scripted one. */
#ifndef VELKOR_TESTS_SUPPORT_SERVER_FIXTURE_H
#define VELKOR_TESTS_SUPPORT_SERVER_FIXTURE_H

#include "tests/support/core_fixture.h"
#include "tests/support/stub_server.h"

namespace velkor::test {

/**
 * Main and static host are `server`. The user is "gebruiker" without a password, so that requests
 * go out without credentials; with a password, the test plug-in makes the secret
 * "geheim:PASSWORD@URL".
 */
class ServerCoreTest : public CoreTest {
protected:
  ServerCoreTest();
  ~ServerCoreTest() override;

  StubServer server;
};

}  // namespace velkor::test

#endif
