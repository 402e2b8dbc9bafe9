/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Single postings: found by number and with details; the watchlists stored for members. */
#include <gmock/gmock.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char *find = "/3.7.3/xml-findpost.php";
constexpr const char *details = "/3.7.3/xml-posts.php";
constexpr const char *watchlist = "/3.7.3/xml-wlist.php";

class ServerDetails : public ServerTest {
protected:
  ServerDetails() { start(); }

  std::string add(const Parameters &fields) { return std::to_string(server->add_posting(fields)); }
};

TEST_F(ServerDetails, FindsAPostingAsListedInDumps) {
  const std::string listed = dump(dump_names().front());
  const std::string id = first_in_xml(listed, "//Event[Status=0]/PostID");
  const std::string found = body_of(find, {{"id", id}});
  const std::string event = "//Event[PostID=" + id + "]/*";
  EXPECT_EQ(find_in_xml(found, "/Post/*"), find_in_xml(listed, event));
}

TEST_F(ServerDetails, IncludesTheDetails) {
  const std::string id = add({{"Title", "Één"},
                              {"Cat", "1"},
                              {"Ann", "aankondiging"},
                              {"Des", "regel 1\r\nregel 2 <&>"},
                              {"Sig", "groet"},
                              {"FType", "2"},
                              {"Files", "12"},
                              {"FStart", "1"},
                              {"Img", "http://x.example/1.jpg"}});
  const std::string reply = body_of(details, {{"id", id}});
  const auto values_of = [&](const char *name) {
    return find_in_xml(reply, std::string("/PostInfo/Post/") + name);
  };
  EXPECT_THAT(values_of("PostID"), ElementsAre(id));
  EXPECT_THAT(values_of("Title"), ElementsAre("Één"));
  EXPECT_THAT(values_of("Ann"), ElementsAre("aankondiging"));
  EXPECT_THAT(values_of("Des"), ElementsAre("regel 1\r\nregel 2 <&>"));
  EXPECT_THAT(values_of("Sig"), ElementsAre("groet"));
  EXPECT_THAT(values_of("FType"), ElementsAre("2"));
  EXPECT_THAT(values_of("Files"), ElementsAre("12"));
  EXPECT_THAT(values_of("FStart"), ElementsAre("1"));
  EXPECT_THAT(values_of("Img"), ElementsAre("http://x.example/1.jpg"));
  EXPECT_THAT(find_in_xml(reply, "//MP3"), IsEmpty());
}

TEST_F(ServerDetails, TracksFollowThePosting) {
  const std::string id = add({{"Title", "x"}, {"Tracks", "1. een|ZOX|2. twee & drie|ZOX|"}});
  const std::string reply = body_of(details, {{"id", id}});
  EXPECT_THAT(find_in_xml(reply, "/PostInfo/Post/following-sibling::MP3/Track"),
              ElementsAre("1. een", "2. twee & drie", ""));
}

TEST_F(ServerDetails, EmptyFieldsHaveNoElement) {
  const std::string reply = body_of(details, {{"id", add({{"Title", "x"}, {"Cat", "0"}})}});
  for (const char *name :
       {"FName", "Groups", "Tags", "Tag", "Link", "SCat", "Ann", "Des", "Sig", "Img"})
    EXPECT_THAT(find_in_xml(reply, std::string("//") + name), IsEmpty()) << name;
}

TEST_F(ServerDetails, DeletedAndRemovedPostingsAreNotFound) {
  const std::string deleted = add({{"Title", "x"}, {"Status", "-2"}});
  const std::string removed = add({{"Title", "x"}, {"Status", "-3"}});
  for (const std::string &id : {deleted, removed, std::string("99999"), std::string("x")}) {
    EXPECT_EQ(body_of(find, {{"id", id}}), "NOTFOUND");
    EXPECT_EQ(body_of(details, {{"id", id}}), "NOTFOUND");
  }
}

TEST_F(ServerDetails, ARequestCountsAsAView) {
  const std::string id = add({{"Title", "x"}, {"View", "7"}});
  body_of(details, {{"id", id}});
  EXPECT_EQ(first_in_xml(body_of("/3.7.3/xml-dyn.php", {{"id", id}, {"lastcheck", "0"}}), "//View"),
            "8");
}

TEST_F(ServerDetails, AViewIsNotAnnounced) {
  const std::string id = add({{"Title", "x"}});
  const std::string reply = body_of("/3.7.3/xml.php", {{"lc", "0"}});
  body_of(details, {{"id", id}});
  EXPECT_EQ(body_of("/3.7.3/xml.php", {{"lc", "0"}}), reply);
}

TEST_F(ServerDetails, KeepsAWatchlistForEachMember) {
  server->add_account("anna", "kwartel");
  EXPECT_EQ(body_of(watchlist, {{"mode", "load"}}), "");
  EXPECT_EQ(body_of(watchlist, {{"mode", "save"}, {"data", "|12*1|5*1|7*1|"}}), "OK");
  EXPECT_EQ(body_of(watchlist, {{"mode", "load"}}), "|12|5|7|");
  EXPECT_EQ(ask(watchlist, {{"mode", "load"}}, "anna", "kwartel").body, "");
}

TEST_F(ServerDetails, SavingReplacesTheWatchlist) {
  body_of(watchlist, {{"mode", "save"}, {"data", "|12*1|5*1|"}});
  body_of(watchlist, {{"mode", "save"}, {"data", "|8*1|8*1|"}});
  EXPECT_EQ(body_of(watchlist, {{"mode", "load"}}), "|8|");
}

TEST_F(ServerDetails, AMalformedWatchlistChangesNothing) {
  body_of(watchlist, {{"mode", "save"}, {"data", "|12*1|"}});
  for (const char *data : {"|5|", "|x*1|", "|0*1|", "|5*1|6*2|"})
    EXPECT_EQ(body_of(watchlist, {{"mode", "save"}, {"data", data}}), "FAIL") << data;
  EXPECT_EQ(body_of(watchlist, {{"mode", "vergeet"}}), "FAIL");
  EXPECT_EQ(body_of(watchlist, {{"mode", "load"}}), "|12|");
}

}  // namespace
}  // namespace velkor::test
