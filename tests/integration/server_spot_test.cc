/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A member's own postings: posting a spot, the overview, announcing one again. */
#include <gmock/gmock.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char *post = "/3.7.3/xml-post.php";
constexpr const char *overview = "/3.7.3/xml-myzox.php";
constexpr std::int64_t then = 1'227'351'600;

class ServerSpot : public ServerTest {
protected:
  ServerSpot() {
    start({"--postings", "0", "--now", std::to_string(then)});
    server->add_account("anna", "kwartel");
  }

  /** The parameters that every client sends, overridden or supplemented by `other`. */
  static Parameters spot(const Parameters &other = {}) {
    Parameters parameters{{"m", "add"}, {"t", "Een spot"}, {"s", "0"},  {"g", "|3|7|"},
                          {"ft", "2"},  {"fn", "5"},       {"fs", "1"}, {"pars", "4"},
                          {"pt", "1"},  {"c", "1"},        {"sc", "3"}, {"tags", "|b2|d4|"}};
    // The last of several parameters with the same name counts.
    parameters.insert(parameters.end(), other.begin(), other.end());
    return parameters;
  }
  std::string post_spot(const Parameters &other = {}) { return body_of(post, spot(other)); }
};

TEST_F(ServerSpot, ANewSpotIsPublishedInTheNextDump) {
  const std::string reply =
      post_spot({{"fstr", "een.rar"}, {"l", "http://x.example/?a=1&b=2"}, {"tag", "vrij"}});
  ASSERT_TRUE(reply.starts_with("1")) << reply;
  const std::string names =
      first_in_xml(ask("/3.7.3/xml.php", {{"lc", "0"}}, "anna", "kwartel").body, "//Chunks");
  const std::string document = dump(names);
  const auto value_of = [&](const char *name) {
    return first_in_xml(document, std::string("//") + name);
  };
  EXPECT_EQ(value_of("PostID"), reply.substr(1));
  EXPECT_EQ(value_of("Stamp"), std::to_string(then));
  EXPECT_EQ(value_of("Title"), "Een spot");
  EXPECT_EQ(value_of("Poster"), "demo");
  EXPECT_EQ(value_of("Status"), "0");
  EXPECT_EQ(value_of("Groups"), "|3|7|");
  EXPECT_EQ(value_of("FName"), "een.rar");
  EXPECT_EQ(value_of("Link"), "http://x.example/?a=1&b=2");
  EXPECT_EQ(value_of("Cat"), "1");
  EXPECT_EQ(value_of("SCat"), "3");
  EXPECT_EQ(value_of("Tags"), "|a3|b2|d4|");
  EXPECT_EQ(value_of("Tag"), "vrij");
}

TEST_F(ServerSpot, TheDetailsAreStored) {
  const std::string id =
      post_spot({{"a", "straks"}, {"img", "http://x.example/1.jpg"}, {"bs", "384000"}}).substr(1);
  EXPECT_EQ(body_of(post, {{"section", "1"}, {"d", "Beschrijving"}, {"id", id}, {"m", "upd"}}),
            "OK");
  EXPECT_EQ(body_of(post, {{"section", "2"}, {"sig", "Groet"}, {"id", id}, {"m", "upd"}}), "OK");
  EXPECT_EQ(body_of(post, {{"s", id}, {"m", "mp3"}, {"str", "een|ZOX|twee"}}), "OK");
  const std::string details = body_of("/3.7.3/xml-posts.php", {{"id", id}});
  EXPECT_EQ(first_in_xml(details, "//Ann"), "straks");
  EXPECT_EQ(first_in_xml(details, "//Des"), "Beschrijving");
  EXPECT_EQ(first_in_xml(details, "//Sig"), "Groet");
  EXPECT_EQ(first_in_xml(details, "//Img"), "http://x.example/1.jpg");
  EXPECT_EQ(first_in_xml(details, "//FType"), "2");
  EXPECT_EQ(first_in_xml(details, "//Files"), "5");
  EXPECT_THAT(find_in_xml(details, "//Track"), ElementsAre("een", "twee"));
  const std::string forum = body_of("/3.7.3/xml-dyn.php", {{"id", id}, {"lastcheck", "0"}});
  EXPECT_EQ(first_in_xml(forum, "//Pars"), "4");
  EXPECT_EQ(first_in_xml(forum, "//ParType"), "1");
  EXPECT_EQ(first_in_xml(forum, "//BlockSize"), "384000");
}

TEST_F(ServerSpot, TheSubCategoryIsAddedToTheTags) {
  post_spot({{"tags", ""}});
  EXPECT_EQ(first_in_xml(dump(dump_names().front()), "//Tags"), "|a3|");
}

TEST_F(ServerSpot, ARepeatedTitleIsAPossibleDuplicate) {
  EXPECT_EQ(post_spot(), "11");
  EXPECT_EQ(post_spot(), "02");
  EXPECT_THAT(find_in_xml(dump(dump_names().front()), "//Event"), SizeIs(2));
}

TEST_F(ServerSpot, InvalidSpotsAreRejected) {
  EXPECT_EQ(post_spot({{"t", ""}}), "C");
  EXPECT_EQ(post_spot({{"t", std::string(256, 'x')}}), "C");
  EXPECT_EQ(post_spot({{"g", "|"}}), "C");
  EXPECT_EQ(post_spot({{"c", "4"}}), "C");
  EXPECT_EQ(post_spot({{"c", "-1"}}), "C");
  EXPECT_EQ(post_spot({{"s", "-2"}}), "C");
  EXPECT_EQ(post_spot({{"m", "del"}}), "FAIL");
  EXPECT_THAT(dump_names(), IsEmpty());
}

TEST_F(ServerSpot, OnlyThePosterCanChangeASpot) {
  const std::string id = post_spot().substr(1);
  const auto as_anna = [&](const Parameters &parameters) {
    return ask(post, parameters, "anna", "kwartel").body;
  };
  EXPECT_EQ(as_anna({{"section", "1"}, {"d", "x"}, {"id", id}, {"m", "upd"}}), "FAIL");
  EXPECT_EQ(as_anna({{"s", id}, {"m", "mp3"}, {"str", "x"}}), "FAIL");
  EXPECT_EQ(body_of(post, {{"section", "3"}, {"d", "x"}, {"id", id}, {"m", "upd"}}), "FAIL");
  EXPECT_EQ(body_of(post, {{"section", "1"}, {"d", "x"}, {"id", "99"}, {"m", "upd"}}), "FAIL");
}

TEST_F(ServerSpot, TheOverviewListsOwnPostingsOnly) {
  EXPECT_THAT(find_in_xml(body_of(overview), "/MyZOX/*"), IsEmpty());
  const std::string first = post_spot().substr(1);
  server->advance({.seconds = 60});
  const std::string second = post_spot({{"t", "Nog een & meer"}}).substr(1);
  server->add_posting({{"Title", "x"}, {"Poster", "anna"}});
  EXPECT_THAT(find_in_xml(body_of(overview), "/MyZOX/Post/@ID"), ElementsAre(second, first));
  EXPECT_THAT(find_in_xml(body_of(overview, {{"mode", "list"}}), "//Title"),
              ElementsAre("Nog een & meer", "Een spot"));
  EXPECT_EQ(body_of(overview, {{"mode", "wis"}}), "FAIL");
}

TEST_F(ServerSpot, TheOverviewIncludesFieldsAndCounts) {
  const std::string id = post_spot({{"fstr", "een.rar"}}).substr(1);
  body_of("/3.7.3/xml-forum.php", {{"m", "add"}, {"b", "x"}, {"s", id}});
  ask("/3.7.3/xml-kudos.php", {{"mode", "give"}, {"id", id}, {"kudos", "4"}}, "anna", "kwartel");
  ask("/3.7.3/xml-warn.php", {{"id", id}, {"forumid", "0"}, {"reason", "x"}}, "anna", "kwartel");
  const std::string reply = body_of(overview);
  const auto value_of = [&](const char *name) {
    return first_in_xml(reply, std::string("//") + name);
  };
  EXPECT_EQ(value_of("Stamp"), std::to_string(then));
  EXPECT_EQ(value_of("Edit"), "y");
  EXPECT_EQ(value_of("Groups"), "|3|7|");
  EXPECT_EQ(value_of("FName"), "een.rar");
  EXPECT_EQ(value_of("Status"), "0");
  EXPECT_EQ(value_of("Poster"), "demo");
  EXPECT_EQ(value_of("Cat"), "1");
  EXPECT_EQ(value_of("SCat"), "3");
  EXPECT_EQ(value_of("Updated"), std::to_string(then));
  EXPECT_EQ(value_of("Kudos"), "4");
  EXPECT_EQ(value_of("Forum"), "1");
  EXPECT_EQ(value_of("Reps"), "1");
  EXPECT_EQ(value_of("Reqs"), "0");
  EXPECT_EQ(value_of("Rating"), "0");
  EXPECT_EQ(value_of("Mod"), "0");
}

TEST_F(ServerSpot, OldAndDeletedPostingsCannotBeEdited) {
  const std::string id = post_spot().substr(1);
  server->change_posting(std::stoll(id), {{"Status", "-2"}});
  EXPECT_EQ(first_in_xml(body_of(overview), "//Edit"), "n");
  server->change_posting(std::stoll(id), {{"Status", "0"}});
  server->advance({.seconds = 14 * 24 * 3600 - 1});
  EXPECT_EQ(first_in_xml(body_of(overview), "//Edit"), "y");
  server->advance({.seconds = 1});
  EXPECT_EQ(first_in_xml(body_of(overview), "//Edit"), "n");
}

TEST_F(ServerSpot, APostingMayBeAnnouncedAgain) {
  const std::string id = post_spot().substr(1);
  const std::string stamp =
      first_in_xml(body_of("/3.7.3/xml.php", {{"lc", "0"}}), "//Event[@Code=0]/Stamp");
  EXPECT_THAT(dump_names(stamp), IsEmpty());
  EXPECT_EQ(body_of(overview, {{"mode", "update"}, {"id", id}}), "OK");
  ASSERT_THAT(dump_names(stamp), SizeIs(1));
  const std::string document = dump(dump_names(stamp).front());
  EXPECT_THAT(find_in_xml(document, "//PostID"), ElementsAre(id));
  EXPECT_GT(std::stoll(first_in_xml(document, "//Updated")), std::stoll(stamp));
}

TEST_F(ServerSpot, OtherMembersPostingsCannotBeAnnounced) {
  const std::string id = std::to_string(server->add_posting({{"Title", "x"}, {"Poster", "anna"}}));
  EXPECT_EQ(body_of(overview, {{"mode", "update"}, {"id", id}}), "FAIL");
  EXPECT_EQ(body_of(overview, {{"mode", "update"}, {"id", "99"}}), "FAIL");
}

TEST_F(ServerSpot, SomeSamplePostingsAreByMembers) {
  start({"--postings", "1000"});
  EXPECT_GT(find_in_xml(body_of(overview), "/MyZOX/Post").size(), 5U);
}

}  // namespace
}  // namespace velkor::test
