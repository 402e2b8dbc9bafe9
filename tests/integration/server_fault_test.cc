/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The injected faults, as clients see them. */
#include <gmock/gmock.h>

#include <curl/curl.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

constexpr const char *groups = "/3.7.3/xml-groups.php";

class ServerFault : public ServerTest {
protected:
  ServerFault() { start(); }

  HttpReply faulty(const std::string &kind, const std::string &argument = "") {
    server->fault(groups, kind, 1, argument);
    return ask(groups);
  }
  /** A faulty dump. */
  HttpReply faulty_dump(const std::string &kind) {
    const std::string path = "/3.7.3/dumps/" + dump_names().front() + ".gz";
    server->fault("/3.7.3/dumps/", kind, 1);
    return ask_as_nobody(path);
  }
  /** The reply to a client that lets libcurl decompress. */
  HttpReply faulty_encoding(const std::string &kind, const std::string &path = groups) {
    const std::string url = "http://" + server->host() + path;
    server->fault("*", kind, 1);
    return send({.url = url,
                 .credentials = std::string("demo:") + server_secret(url, ServerProcess::password),
                 .accept_gzip = true});
  }
};

TEST_F(ServerFault, StatusWords) {
  EXPECT_EQ(faulty("unauth").body, "UNAUTH");
  EXPECT_EQ(faulty("ban").body, "BAN");
  EXPECT_EQ(faulty("database").body, "Could not connect to the database");
  EXPECT_EQ(faulty("update").body, "UPD");
  EXPECT_EQ(faulty("message").body, "MSGOnderhoud");
  EXPECT_EQ(faulty("message", " tot 3:00 & later").body, "MSG tot 3:00 & later");
}

TEST_F(ServerFault, StatusWordsAreOrdinaryReplies) {
  EXPECT_EQ(faulty("ban").status, 200);
}

TEST_F(ServerFault, AppliesAsOftenAsRequested) {
  server->fault(groups, "ban", 2);
  EXPECT_EQ(ask(groups).body, "BAN");
  EXPECT_EQ(ask(groups).body, "BAN");
  EXPECT_TRUE(is_xml(ask(groups).body));
}

TEST_F(ServerFault, WithoutANumberAppliesUntilRemoved) {
  server->fault("*", "ban");
  EXPECT_EQ(ask(groups).body, "BAN");
  EXPECT_EQ(ask_as_nobody("/3.7.3/dumps/x.gz").body, "BAN");
  server->clear_faults();
  EXPECT_TRUE(is_xml(ask(groups).body));
}

TEST_F(ServerFault, FaultsOfOnePathApplyInOrder) {
  server->fault(groups, "ban", 1);
  server->fault(groups, "update", 1);
  EXPECT_EQ(ask(groups).body, "BAN");
  EXPECT_EQ(ask(groups).body, "UPD");
}

TEST_F(ServerFault, DoesNotApplyToOtherPaths) {
  server->fault("/3.7.3/xml.php", "ban");
  EXPECT_TRUE(is_xml(ask(groups).body));
}

TEST_F(ServerFault, MayBeGivenOnTheCommandLine) {
  start({"--postings", "5", "--fault", "/3.7.3/xml-groups.php=message:1:Tot 12:30", "--fault",
         "/3.7.3/dumps/=error"});
  EXPECT_EQ(ask(groups).body, "MSGTot 12:30");
  EXPECT_TRUE(is_xml(ask(groups).body));
  EXPECT_EQ(ask_as_nobody("/3.7.3/dumps/x.gz").status, 500);
  EXPECT_EQ(ask_as_nobody("/3.7.3/dumps/x.gz").status, 500);
}

TEST_F(ServerFault, Close) {
  EXPECT_EQ(faulty("close").result, CURLE_GOT_NOTHING);
}

TEST_F(ServerFault, Reset) {
  EXPECT_EQ(faulty("reset").result, CURLE_RECV_ERROR);
}

TEST_F(ServerFault, StallBlocksOneClientOnly) {
  server->fault(groups, "stall", 1);
  const std::string url = "http://" + server->host() + groups;
  EXPECT_EQ(send({.url = url, .seconds = 1}).result, CURLE_OPERATION_TIMEDOUT);
  EXPECT_TRUE(is_xml(ask(groups).body));
}

TEST_F(ServerFault, StallDoesNotPreventTheServerFromStopping) {
  server->fault(groups, "stall", 1);
  send({.url = "http://" + server->host() + groups, .seconds = 1});
  EXPECT_EQ(server->stop(), 0);
}

TEST_F(ServerFault, Drop) {
  const std::string whole = ask(groups).body;
  const HttpReply reply = faulty("drop");
  EXPECT_EQ(reply.result, CURLE_PARTIAL_FILE);
  EXPECT_EQ(reply.body, whole.substr(0, whole.size() / 2));
}

TEST_F(ServerFault, DripArrivesComplete) {
  const std::string whole = ask(groups).body;
  const HttpReply reply = faulty("drip", "100000");
  EXPECT_EQ(reply.result, CURLE_OK);
  EXPECT_EQ(reply.body, whole);
}

TEST_F(ServerFault, DripIsSlow) {
  server->fault(groups, "drip", 1, "5");
  const HttpReply reply = send({.url = "http://" + server->host() + groups, .seconds = 1});
  EXPECT_EQ(reply.result, CURLE_OPERATION_TIMEDOUT);
}

TEST_F(ServerFault, WrongLengths) {
  const std::string whole = ask(groups).body;
  const HttpReply shortened = faulty("length-short");
  EXPECT_EQ(shortened.result, CURLE_OK);
  EXPECT_EQ(shortened.body, whole.substr(0, whole.size() / 2));
  const HttpReply lengthened = faulty("length-long");
  EXPECT_EQ(lengthened.result, CURLE_PARTIAL_FILE);
  EXPECT_EQ(lengthened.body, whole);
}

TEST_F(ServerFault, BrokenDumps) {
  const HttpReply truncated = faulty_dump("gzip-truncated");
  EXPECT_EQ(truncated.result, CURLE_OK);
  EXPECT_EQ(truncated.body.substr(0, 2), "\x1f\x8b");
  EXPECT_THROW(gunzip(truncated.body), std::runtime_error);
  const HttpReply corrupt = faulty_dump("gzip-corrupt");
  EXPECT_EQ(corrupt.body.substr(0, 2), "\x1f\x8b");
  EXPECT_THROW(gunzip(corrupt.body), std::runtime_error);
  EXPECT_NE(faulty_dump("gzip-missing").body.substr(0, 2), "\x1f\x8b");
}

TEST_F(ServerFault, BrokenContentEncodings) {
  EXPECT_EQ(faulty_encoding("gzip-missing").result, CURLE_BAD_CONTENT_ENCODING);
  EXPECT_EQ(faulty_encoding("gzip-corrupt").result, CURLE_BAD_CONTENT_ENCODING);
  EXPECT_EQ(faulty_encoding("gzip-truncated").headers.at("content-encoding"), "gzip");
}

TEST_F(ServerFault, ACorruptBodyIsNeverOnlyTooShort) {
  start({"--postings", "400", "--chunk-size", "400"});
  const std::vector<std::string> ids = find_in_xml(dump(dump_names().front()), "//PostID");
  ASSERT_THAT(ids, ::testing::SizeIs(400));
  for (const std::string &id : ids)
    EXPECT_EQ(faulty_encoding("gzip-corrupt", "/3.7.3/xml-findpost.php?id=" + id).result,
              CURLE_BAD_CONTENT_ENCODING)
        << id;
}

TEST_F(ServerFault, BrokenDocuments) {
  EXPECT_FALSE(is_xml(faulty("xml-malformed").body));
  EXPECT_EQ(find_in_xml(faulty("xml-root").body, "/Events").size(), 0U);
  EXPECT_EQ(faulty("empty").body, "");
  EXPECT_THAT(faulty("xml-bomb").body, ::testing::HasSubstr("&a12;"));
}

TEST_F(ServerFault, BrokenDocumentsInDumpsAreCompressed) {
  EXPECT_FALSE(is_xml(gunzip(faulty_dump("xml-malformed").body)));
  EXPECT_EQ(find_in_xml(gunzip(faulty_dump("xml-root").body), "/Events").size(), 0U);
}

TEST_F(ServerFault, HttpFailures) {
  EXPECT_EQ(faulty("error").status, 500);
  const HttpReply redirected = faulty("redirect", "/3.7.3/verhuisd");
  EXPECT_EQ(redirected.status, 302);
  EXPECT_EQ(redirected.headers.at("location"), "/3.7.3/verhuisd");
}

TEST_F(ServerFault, IsLogged) {
  faulty("ban");
  ask(groups);
  const std::vector<LoggedRequest> requests = server->requests(groups);
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].fault, "ban");
  EXPECT_EQ(requests[1].fault, "");
}

TEST_F(ServerFault, UnknownKindsAreRejected) {
  EXPECT_THROW(server->fault(groups, "aardbeving"), std::runtime_error);
}

}  // namespace
}  // namespace velkor::test
