/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading and writing the reactions to a posting. */
#include <gmock/gmock.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char *fetch = "/3.7.3/xml-dyn.php";
constexpr const char *write = "/3.7.3/xml-forum.php";

class ServerForum : public ServerTest {
protected:
  ServerForum() {
    start({"--postings", "30", "--now", "1227351600"});
    posting = std::to_string(server->add_posting({{"Title", "x"},
                                                  {"Poster", "anna"},
                                                  {"Status", "0"},
                                                  {"ParType", "1"},
                                                  {"Pars", "9"},
                                                  {"BlockSize", "384000"},
                                                  {"View", "3"},
                                                  {"Kudos", "5"}}));
  }

  std::string forum(const std::string &since = "0") {
    return body_of(fetch, {{"id", posting}, {"lastcheck", since}});
  }
  std::string react(const std::string &body, const Parameters &further = {}) {
    Parameters parameters{{"m", "add"}, {"b", body}, {"s", posting}};
    parameters.insert(parameters.end(), further.begin(), further.end());
    return body_of(write, parameters);
  }
  std::string stamp() { return first_in_xml(forum(), "/Forum/Event[@Code=0]/Stamp"); }

  std::string posting;
};

TEST_F(ServerForum, IncludesTheDataOfThePosting) {
  const std::string reply = forum();
  const auto values_of = [&](const char *name) {
    return find_in_xml(reply, std::string("/Forum/Event[@Code=0]/") + name);
  };
  EXPECT_THAT(values_of("Status"), ElementsAre("0"));
  EXPECT_THAT(values_of("ParType"), ElementsAre("1"));
  EXPECT_THAT(values_of("Pars"), ElementsAre("9"));
  EXPECT_THAT(values_of("BlockSize"), ElementsAre("384000"));
  EXPECT_THAT(values_of("View"), ElementsAre("3"));
  EXPECT_THAT(values_of("Kudos"), ElementsAre("5"));
  EXPECT_THAT(values_of("Locked"), ElementsAre("0"));
  EXPECT_THAT(values_of("Reason"), IsEmpty());
  EXPECT_THAT(values_of("Stamp"), ElementsAre("0"));
}

TEST_F(ServerForum, IncludesTheReasonOfARemoval) {
  server->change_posting(std::stoll(posting), {{"Status", "-3"}, {"Reason", "Dubbel & leeg"}});
  EXPECT_EQ(first_in_xml(forum(), "//Reason"), "Dubbel & leeg");
}

TEST_F(ServerForum, AReactionAppearsInTheNextReply) {
  const std::string reply = react("regel 1\r\nregel 2 <é>");
  ASSERT_TRUE(reply.starts_with("OK"));
  const std::string reaction = "/Forum/Event[@Code=1]/";
  EXPECT_THAT(find_in_xml(forum(), reaction + "MessID"), ElementsAre(reply.substr(2)));
  EXPECT_THAT(find_in_xml(forum(), reaction + "Author"), ElementsAre("demo"));
  EXPECT_THAT(find_in_xml(forum(), reaction + "Body"), ElementsAre("regel 1\r\nregel 2 <é>"));
  EXPECT_THAT(find_in_xml(forum(), reaction + "Edit"), ElementsAre("0"));
  EXPECT_THAT(find_in_xml(forum(), reaction + "Reply"), IsEmpty());
}

TEST_F(ServerForum, AfterALastCheckOnlyNewReactionsAreIncluded) {
  react("een");
  const std::string between = stamp();
  react("twee");
  EXPECT_THAT(find_in_xml(forum(), "//Body"), ElementsAre("een", "twee"));
  EXPECT_THAT(find_in_xml(forum(between), "//Event[@Code=1]/Body"), ElementsAre("twee"));
  EXPECT_THAT(find_in_xml(forum(between), "//Event[@Code=4]"), SizeIs(1));
  EXPECT_THAT(find_in_xml(forum(between), "//Event[@Code=0]"), IsEmpty());
  EXPECT_THAT(find_in_xml(forum(stamp()), "//Body"), IsEmpty());
}

TEST_F(ServerForum, AnEditedReactionIsMarkedAsChanged) {
  const std::string id = react("een").substr(2);
  const std::string between = stamp();
  server->command("POST", "/reaction", {{"id", id}, {"body", "beter"}});
  EXPECT_THAT(find_in_xml(forum(between), "//Event[@Code=2][Edit>0]/Body"), ElementsAre("beter"));
  EXPECT_THAT(find_in_xml(forum(), "//Event[@Code=1][Edit>0]/Body"), ElementsAre("beter"));
}

TEST_F(ServerForum, AWithdrawnReactionIsReportedOnlyToClientsThatHaveIt) {
  const std::string id = react("een").substr(2);
  const std::string between = stamp();
  server->command("DELETE", "/reaction", {{"id", id}});
  EXPECT_THAT(find_in_xml(forum(between), "//Event[@Code=2][Edit<0]/MessID"), ElementsAre(id));
  EXPECT_THAT(find_in_xml(forum(), "//MessID"), IsEmpty());
  EXPECT_THROW(server->command("DELETE", "/reaction", {{"id", id}}), std::runtime_error);
  EXPECT_THROW(server->command("POST", "/reaction", {{"id", id}, {"body", "x"}}),
               std::runtime_error);
}

TEST_F(ServerForum, KudosOfTheAuthorsComeLast) {
  server->add_account("anna", "kwartel");
  react("een");
  react("twee");
  server->command("POST", "/reaction", {{"posting", posting}, {"user", "anna"}, {"body", "drie"}});
  const std::string reply = forum();
  EXPECT_THAT(find_in_xml(reply, "//Event[@Code=3]/User"), ElementsAre("demo", "anna"));
  EXPECT_EQ(first_in_xml(reply, "//Event[@Code=3][User='anna']/Kudos"), "5");
  EXPECT_THAT(find_in_xml(reply, "//Event[@Code=3]/following-sibling::Event[@Code!=3]"), IsEmpty());
}

TEST_F(ServerForum, AvatarsComeFromTheProfile) {
  server->command("POST", "/account", {{"user", "demo"}, {"Avatar", "http://x.example/a.png"}});
  react("een");
  EXPECT_EQ(first_in_xml(forum(), "//Avatar"), "http://x.example/a.png");
}

TEST_F(ServerForum, AReactionMayReplyToAnother) {
  const std::string first = react("een").substr(2);
  react("twee", {{"r", first}});
  EXPECT_EQ(first_in_xml(forum(), "//Event[Body='twee']/Reply"), first);
  EXPECT_EQ(react("drie", {{"r", "99999"}}), "FAIL");
}

TEST_F(ServerForum, InvalidReactionsAreRejected) {
  EXPECT_EQ(react(""), "FAIL");
  EXPECT_EQ(react(std::string(16 * 1024 + 1, 'x')), "FAIL");
  EXPECT_EQ(body_of(write, {{"m", "remove"}, {"b", "x"}, {"s", posting}}), "FAIL");
  EXPECT_EQ(body_of(write, {{"m", "add"}, {"b", "x"}, {"s", "99999"}}), "NOTFOUND");
  server->change_posting(std::stoll(posting), {{"Locked", "1"}});
  EXPECT_EQ(react("te laat"), "LOCKED");
  EXPECT_THAT(find_in_xml(forum(), "//Body"), IsEmpty());
}

TEST_F(ServerForum, EveryEventHasACode) {
  for (int id = 1; id <= 30; ++id) {
    const std::string reply = body_of(fetch, {{"id", std::to_string(id)}, {"lastcheck", "0"}});
    EXPECT_THAT(find_in_xml(reply, "/Forum/*[not(self::Event and @Code)]"), IsEmpty());
  }
}

TEST_F(ServerForum, UnknownPostingsHaveNoForum) {
  EXPECT_EQ(body_of(fetch, {{"id", "99999"}, {"lastcheck", "0"}}), "NOTFOUND");
}

TEST_F(ServerForum, KeepsReactionsInItsDatabase) {
  const std::string file = (sandbox.home() / "zox.db").string();
  start({"--postings", "3", "--database", file});
  posting = std::to_string(server->add_posting({{"Title", "x"}}));
  react("blijft");
  server->stop();
  start({"--database", file});
  EXPECT_THAT(find_in_xml(forum(), "//Body"), ElementsAre("blijft"));
}

}  // namespace
}  // namespace velkor::test
