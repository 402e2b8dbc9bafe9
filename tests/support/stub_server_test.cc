/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/stub_server.h"

#include <curl/curl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/http_client.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;
using ::testing::SizeIs;

class StubServerTest : public testing::Test {
protected:
  HttpReply get(const std::string &target, long seconds = 0) {
    return send({.url = "http://" + server.host() + target, .seconds = seconds});
  }

  StubServer server;
};

TEST_F(StubServerTest, SendsScriptedReplies) {
  server.reply("/a", {.status = 418, .body = {"x\0y", 3}, .headers = {{"X-Word", "milk"}}});
  const HttpReply reply = get("/a?b=c");
  EXPECT_EQ(reply.result, CURLE_OK);
  EXPECT_EQ(reply.status, 418);
  EXPECT_EQ(reply.body, std::string("x\0y", 3));
  EXPECT_EQ(reply.headers.at("x-word"), "milk");
  EXPECT_EQ(reply.headers.at("content-length"), "3");
  EXPECT_EQ(reply.headers.at("connection"), "close");
  EXPECT_EQ(get("/elsewhere").status, 404);
}

TEST_F(StubServerTest, SendsSingleRepliesBeforeTheStandingOne) {
  server.reply("/a", "standing");
  server.reply_once("/a", "first");
  server.reply_once("/a", "second");
  EXPECT_EQ(get("/a").body, "first");
  EXPECT_EQ(get("/a").body, "second");
  EXPECT_EQ(get("/a").body, "standing");
  EXPECT_EQ(get("/a").body, "standing");
}

TEST_F(StubServerTest, RecordsRequestsInOrder) {
  get("/a%20b?z+z=a%20b%26c&a=&m=%C3%A9&a=2");
  send({.url = "http://" + server.host() + "/c", .headers = {"X-Word:  milk "}});
  ASSERT_THAT(server.requests(), SizeIs(2));
  const StubRequest first = server.requests().front();
  EXPECT_EQ(first.method, "GET");
  EXPECT_EQ(first.target, "/a%20b?z+z=a%20b%26c&a=&m=%C3%A9&a=2");
  EXPECT_EQ(first.path, "/a%20b");
  EXPECT_THAT(first.parameters, ElementsAre(Pair("z+z", "a b&c"), Pair("a", ""),
                                            Pair("m", "\xc3\xa9"), Pair("a", "2")));
  EXPECT_EQ(first.parameter("a"), "");
  EXPECT_EQ(first.parameter("none"), "");
  ASSERT_THAT(server.requests("/c"), SizeIs(1));
  EXPECT_EQ(server.requests("/c").front().headers.at("x-word"), "milk");
}

TEST_F(StubServerTest, RecordsTheWholeUrlThatAProxyIsSent) {
  server.reply("/a", "proxied");
  EXPECT_EQ(send({.url = "http://zox.test/a?b=c", .proxy = server.host()}).body, "proxied");
  EXPECT_EQ(server.requests().front().target, "http://zox.test/a?b=c");
}

TEST_F(StubServerTest, SendsBrokenReplies) {
  server.reply("/silent", StubReply{.close_at_once = true});
  EXPECT_EQ(get("/silent").result, CURLE_GOT_NOTHING);
  server.reply("/cut", StubReply{.body = "whole", .send_only = 2});
  EXPECT_EQ(get("/cut").result, CURLE_PARTIAL_FILE);
  EXPECT_EQ(get("/cut").body, "wh");
  server.reply("/long", StubReply{.body = "half", .claim_length = 100});
  EXPECT_EQ(get("/long").result, CURLE_PARTIAL_FILE);
  EXPECT_EQ(get("/long").headers.at("content-length"), "100");
  server.reply("/reset", StubReply{.close_at_once = true, .reset = true});
  EXPECT_EQ(get("/reset").result, CURLE_RECV_ERROR);
  server.reply("/framing", StubReply{.body = "x", .headers = {{"Content-Length", "kapot"}}});
  EXPECT_NE(get("/framing").result, CURLE_OK);
}

TEST_F(StubServerTest, StallsWithoutHoldingUpOtherRequests) {
  server.reply("/stalled", StubReply{.body = "half", .claim_length = 100, .stall = true});
  server.reply("/a", "answered");
  EXPECT_EQ(get("/stalled", 1).result, CURLE_OPERATION_TIMEDOUT);
  EXPECT_EQ(get("/a").body, "answered");
}

}  // namespace
}  // namespace velkor::test
