/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Shared by the tests of the stand-in server: a server process, requests of a member, XPath. */
#ifndef VELKOR_TESTS_INTEGRATION_SERVER_TEST_H
#define VELKOR_TESTS_INTEGRATION_SERVER_TEST_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/http_client.h"
#include "tests/support/sandbox.h"
#include "tests/support/server_process.h"

namespace velkor::test {

/** The string values of all nodes that an XPath expression matches; throws on malformed XML. */
std::vector<std::string> find_in_xml(const std::string &document, const std::string &expression);
/** The first of those values, empty when there are none. */
std::string first_in_xml(const std::string &document, const std::string &expression);
/** Whether the text is a well-formed XML document. */
bool is_xml(const std::string &document);

std::string gunzip(std::string packed);

class ServerTest : public ::testing::Test {
protected:
  using Parameters = ServerProcess::Parameters;

  /** Every server must exit cleanly; with sanitizers, that includes leaks. */
  void TearDown() override { stop(); }

  void stop();
  /** Starts a server, stopping any earlier one; tests have none until they call this. */
  ServerProcess &start(const std::vector<std::string> &options = {"--postings", "30"});

  /** Sends a request of a member, with a valid secret. */
  HttpReply ask(const std::string &path, const Parameters &parameters = {},
                const std::string &user = ServerProcess::user,
                const std::string &password = ServerProcess::password);
  std::string body_of(const std::string &path, const Parameters &parameters = {}) {
    return ask(path, parameters).body;
  }
  /** Sends a request without credentials. */
  HttpReply ask_as_nobody(const std::string &path, const Parameters &parameters = {});

  /** The dumps that xml.php names. */
  std::vector<std::string> dump_names(const std::string &since = "0");
  /** The decompressed content of a dump. */
  std::string dump(const std::string &name);

  Sandbox sandbox;
  std::optional<ServerProcess> server;
};

}  // namespace velkor::test

#endif
