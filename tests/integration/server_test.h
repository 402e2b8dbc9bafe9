/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the tests of the stand-in server share: a server, a member who asks, XML to look into. */
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

/** The string values of all nodes that an XPath expression finds; throws on unreadable XML. */
std::vector<std::string> find_in_xml(const std::string &document, const std::string &expression);
/** The first of them, empty without any. */
std::string first_in_xml(const std::string &document, const std::string &expression);
/** Whether the text is a well-formed document. */
bool is_xml(const std::string &document);

std::string gunzip(const std::string &packed);

class ServerTest : public ::testing::Test {
protected:
  using Parameters = ServerProcess::Parameters;

  /** However a server was treated, it ends in good order (and without leaks, where that is seen).
   */
  void TearDown() override { stop(); }

  void stop();
  /** Starts a server in the place of the one there is; without it a test has none. */
  ServerProcess &start(const std::vector<std::string> &options = {"--postings", "30"});

  /** What the member gets for `path`, with the right secret. */
  HttpReply ask(const std::string &path, const Parameters &parameters = {},
                const std::string &user = ServerProcess::user,
                const std::string &password = ServerProcess::password);
  std::string body_of(const std::string &path, const Parameters &parameters = {}) {
    return ask(path, parameters).body;
  }
  /** What anyone gets for `path`. */
  HttpReply ask_as_nobody(const std::string &path, const Parameters &parameters = {});

  /** The names of the dumps in a reply of the availability question. */
  std::vector<std::string> dump_names(const std::string &since = "0");
  /** The decompressed document of a dump. */
  std::string dump(const std::string &name);

  Sandbox sandbox;
  std::optional<ServerProcess> server;
};

}  // namespace velkor::test

#endif
