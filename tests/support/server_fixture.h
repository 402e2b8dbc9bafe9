/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A core that talks to a scripted server. */
#ifndef VELKOR_TESTS_SUPPORT_SERVER_FIXTURE_H
#define VELKOR_TESTS_SUPPORT_SERVER_FIXTURE_H

#include "tests/support/core_fixture.h"
#include "tests/support/stub_server.h"

namespace velkor::test {

/**
 * `server` is both the main and the static host. The user is "gebruiker" without a password, so
 * requests carry no credentials; with a password, the test plug-in returns the secret
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
