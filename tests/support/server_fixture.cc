/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/server_fixture.h"

#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

namespace velkor::test {

ServerCoreTest::ServerCoreTest() {
  zox_http_set_hosts(server.host().c_str(), server.host().c_str());
  core->config->username = zox_string_new("gebruiker");
}

ServerCoreTest::~ServerCoreTest() {
  zox_http_set_hosts(nullptr, nullptr);
}

}  // namespace velkor::test
