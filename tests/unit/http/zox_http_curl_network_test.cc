/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Networks that fail, proxies, and the callback that follows a transfer. */
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

#include "tests/support/server_fixture.h"
#include "tests/unit/http/request.h"

namespace velkor {
namespace {

using test::EnvironmentVariable;
using test::Request;
using test::StubReply;
using testing::Optional;
using testing::SizeIs;
using testing::StrEq;

constexpr const char *path = "/3.7.3/xml.php";

/** A name that no resolver has to be asked about: its label is too long. */
const std::string unresolvable = std::string(64, 'x') + ".invalid";

/** An address at which nobody listens any more. */
std::string deserted_host() {
  return test::StubServer().host();
}

class ZoxHttpCurlNetwork : public test::ServerCoreTest {
protected:
  void expect_failure(StubReply reply, ZoxErrorCode code) {
    server.reply_once(path, std::move(reply));
    EXPECT_EQ(Request{}.execute().code, code);
  }

  void use_proxy(const std::string &host) {
    const auto colon = host.find(':');
    replace_string(core->config->proxyHost, zox_string_new(host.substr(0, colon).c_str()));
    replace_string(core->config->proxyPort, zox_string_new(host.substr(colon + 1).c_str()));
  }

  ~ZoxHttpCurlNetwork() override { zox_http_set_transfer_callback(nullptr, nullptr); }
};

TEST_F(ZoxHttpCurlNetwork, CannotReachAHostWhereNobodyListens) {
  zox_http_set_hosts(deserted_host().c_str(), nullptr);
  EXPECT_EQ(Request{}.execute().code, 16U);
}

TEST_F(ZoxHttpCurlNetwork, CannotResolveTheHost) {
  zox_http_set_hosts(unresolvable.c_str(), nullptr);
  EXPECT_EQ(Request{}.execute().code, 14U);
}

TEST_F(ZoxHttpCurlNetwork, CannotResolveTheProxy) {
  use_proxy(unresolvable + ":8080");
  EXPECT_EQ(Request{}.execute().code, 15U);
}

TEST_F(ZoxHttpCurlNetwork, SeesAConnectionThatEndsTooSoon) {
  expect_failure({.close_at_once = true}, 1);
  expect_failure({.body = "half", .claim_length = 100}, 1);
  expect_failure({.body = "whole", .send_only = 2}, 1);
}

TEST_F(ZoxHttpCurlNetwork, SeesAConnectionThatIsReset) {
  expect_failure({.close_at_once = true, .reset = true}, 17);
  expect_failure({.body = "half", .claim_length = 100, .reset = true}, 17);
}

TEST_F(ZoxHttpCurlNetwork, RefusesWhatIsNotHttp) {
  expect_failure({.body = "x", .headers = {{"Content-Length", "kapot"}}}, 1);
}

TEST_F(ZoxHttpCurlNetwork, UsesTheProxyOfTheSettings) {
  use_proxy(server.host());
  zox_http_set_hosts("zox.test", nullptr);
  server.reply(path, "OK");
  EXPECT_EQ(Request{}.execute().code, 0U);
  const auto requests = server.requests(path);
  ASSERT_THAT(requests, SizeIs(1));
  EXPECT_EQ(requests[0].target, "http://zox.test/3.7.3/xml.php");
  EXPECT_FALSE(requests[0].headers.contains("proxy-authorization"));
}

TEST_F(ZoxHttpCurlNetwork, GivesTheProxyItsCredentials) {
  use_proxy(server.host());
  core->config->proxyUser = zox_string_new("baas");
  server.reply(path, "OK");
  EXPECT_EQ(Request{}.execute().code, 0U);
  core->config->proxyPassword = zox_string_new("sleutel");
  EXPECT_EQ(Request{}.execute().code, 0U);
  const auto requests = server.requests(path);
  ASSERT_THAT(requests, SizeIs(2));
  EXPECT_FALSE(requests[0].headers.contains("proxy-authorization"));
  EXPECT_EQ(requests[1].headers.at("proxy-authorization"), "Basic YmFhczpzbGV1dGVs");
}

TEST_F(ZoxHttpCurlNetwork, UsesNoProxyUnlessHostAndPortAreSet) {
  server.reply(path, "OK");
  core->config->proxyUser = zox_string_new("baas");
  core->config->proxyPassword = zox_string_new("sleutel");
  use_proxy(deserted_host());
  replace_string(core->config->proxyPort, nullptr);
  EXPECT_EQ(Request{}.execute().code, 0U);
  use_proxy(deserted_host());
  replace_string(core->config->proxyHost, nullptr);
  EXPECT_EQ(Request{}.execute().code, 0U);
  EXPECT_FALSE(server.requests(path).back().headers.contains("proxy-authorization"));
}

TEST_F(ZoxHttpCurlNetwork, LeavesTheChoiceOfAProxyToTheSettings) {
  const EnvironmentVariable proxy("http_proxy", "http://" + deserted_host());
  const EnvironmentVariable all("ALL_PROXY", "http://" + deserted_host());
  server.reply(path, "OK");
  EXPECT_EQ(Request{}.execute().code, 0U);
  const EnvironmentVariable none("no_proxy", "*");
  use_proxy(deserted_host());
  EXPECT_EQ(Request{}.execute().code, 16U);
}

TEST_F(ZoxHttpCurlNetwork, RefusesAPortThatIsNone) {
  use_proxy("127.0.0.1:65536");
  server.reply(path, "OK");
  EXPECT_EQ(Request{}.execute().code, 1U);
}

/** What a transfer callback received. */
struct Followed {
  gint64 received = -1;
  gint64 total = -1;
  gint answer = 0;
  std::thread::id thread{};
};

gint follow(gint64 received, gint64 total, gpointer data) {
  auto *followed = static_cast<Followed *>(data);
  *followed = {received, total, followed->answer, std::this_thread::get_id()};
  return followed->answer;
}

TEST_F(ZoxHttpCurlNetwork, IsFollowedByTheTransferCallback) {
  Followed followed;
  zox_http_set_transfer_callback(follow, &followed);
  server.reply(path, std::string(100000, 'x'));
  EXPECT_EQ(Request{}.execute().code, 0U);
  EXPECT_EQ(followed.received, 100000);
  EXPECT_EQ(followed.total, 100000);
  EXPECT_EQ(followed.thread, std::this_thread::get_id());
}

TEST_F(ZoxHttpCurlNetwork, IsStoppedByTheTransferCallback) {
  Followed followed{.answer = 1};
  zox_http_set_transfer_callback(follow, &followed);
  server.reply(path, StubReply{.body = "half", .claim_length = 100, .stall = true});
  EXPECT_EQ(Request{}.execute().code, 1U);
}

gint stop_after_data(gint64 received, gint64, gpointer) {
  return received > 0 ? 1 : 0;
}

TEST_F(ZoxHttpCurlNetwork, IsStoppedInTheMiddleOfAStalledReply) {
  zox_http_set_transfer_callback(stop_after_data, nullptr);
  server.reply(path, StubReply{.body = "half", .claim_length = 100, .stall = true});
  EXPECT_EQ(Request{}.execute().code, 1U);
}

}  // namespace
}  // namespace velkor
