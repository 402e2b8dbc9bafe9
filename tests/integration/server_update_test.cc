/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What an update fetches: xml.php, the dumps and the newsgroups. */
#include <algorithm>
#include <set>

#include <gmock/gmock.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAreArray;

constexpr const char *availability = "/3.7.3/xml.php";
/** A Saturday in November 2008. */
constexpr std::int64_t then = 1'227'351'600;
constexpr const char *stamp_path = "/Events/Event[@Code='0']/Stamp";

class ServerUpdate : public ServerTest {
protected:
  static std::string stamp_of(const std::string &reply) { return first_in_xml(reply, stamp_path); }
  /** The stamp of an up-to-date client. */
  std::string latest() {
    std::string stamp = "0";
    while (!dump_names(stamp).empty())
      stamp = stamp_of(body_of(availability, {{"lc", stamp}}));
    return stamp;
  }
  std::vector<std::string> ids_in_dumps(const std::string &since) {
    std::vector<std::string> ids;
    for (const std::string &name : dump_names(since))
      std::ranges::copy(find_in_xml(dump(name), "/Events/Event/PostID"), std::back_inserter(ids));
    return ids;
  }
};

std::vector<std::string> as_texts(const std::vector<std::int64_t> &numbers) {
  std::vector<std::string> texts;
  texts.reserve(numbers.size());
  for (const std::int64_t number : numbers)
    texts.push_back(std::to_string(number));
  return texts;
}

TEST_F(ServerUpdate, NamesALimitedNumberOfDumpsAtATime) {
  start({"--postings", "45", "--chunk-size", "10", "--chunks-per-reply", "2"});
  std::set<std::string> ids;
  std::vector<std::size_t> counts;
  std::string stamp = "0";
  do {
    const std::vector<std::string> names = dump_names(stamp);
    counts.push_back(names.size());
    for (const std::string &name : names) {
      for (const std::string &id : find_in_xml(dump(name), "//PostID"))
        EXPECT_TRUE(ids.insert(id).second) << id << " was published twice";
    }
    stamp = stamp_of(body_of(availability, {{"lc", stamp}}));
  } while (counts.back() > 0);
  EXPECT_THAT(counts, ElementsAre(2, 2, 1, 0));
  EXPECT_THAT(ids, SizeIs(45));
}

TEST_F(ServerUpdate, KeepsTheStampWhenNothingIsNew) {
  start();
  const std::string stamp = latest();
  const std::string reply = body_of(availability, {{"lc", stamp}});
  EXPECT_EQ(stamp_of(reply), stamp);
  EXPECT_THAT(find_in_xml(reply, "/Events/Event[@Code='7']"), IsEmpty());
}

TEST_F(ServerUpdate, WithoutAStampEverythingIsNew) {
  start();
  EXPECT_EQ(body_of(availability), body_of(availability, {{"lc", "0"}}));
  EXPECT_EQ(body_of(availability, {{"lc", "gisteren"}}), body_of(availability, {{"lc", "0"}}));
}

TEST_F(ServerUpdate, PublishesTheChangesSinceAStamp) {
  start();
  const std::string before = latest();
  const auto changed = server->advance({.added = 5, .updated = 4, .deleted = 2, .removed = 3});
  EXPECT_GT(changed.stamp, std::stoll(before));
  const std::vector<std::string> names = dump_names(before);
  ASSERT_THAT(names, SizeIs(1));
  const std::string document = dump(names.front());
  EXPECT_THAT(find_in_xml(document, "//Event[Stamp=Updated]/PostID"),
              UnorderedElementsAreArray(as_texts(changed.added)));
  EXPECT_THAT(find_in_xml(document, "//Event[Status=-2]/PostID"),
              UnorderedElementsAreArray(as_texts(changed.deleted)));
  EXPECT_THAT(find_in_xml(document, "//Event[Status=-3]/PostID"),
              UnorderedElementsAreArray(as_texts(changed.removed)));
  EXPECT_THAT(find_in_xml(document, "//Event[Stamp<Updated and Status>-2]/PostID"),
              UnorderedElementsAreArray(as_texts(changed.updated)));
  EXPECT_THAT(find_in_xml(document, "//Updated"), Each(std::to_string(changed.stamp)));
}

TEST_F(ServerUpdate, ChangesInTheSameSecondReachUpToDateClients) {
  start({"--postings", "10", "--now", std::to_string(then)});
  server->advance({.added = 1});
  const std::string first = latest();
  const auto changed = server->advance({.added = 2});
  EXPECT_THAT(ids_in_dumps(first), UnorderedElementsAreArray(as_texts(changed.added)));
}

TEST_F(ServerUpdate, ADumpNeverChanges) {
  start();
  const std::string name = dump_names().front();
  const std::string before = ask_as_nobody("/3.7.3/dumps/" + name + ".gz").body;
  server->advance({.updated = 30});
  EXPECT_EQ(dump_names().front(), name);
  EXPECT_EQ(ask_as_nobody("/3.7.3/dumps/" + name + ".gz").body, before);
}

TEST_F(ServerUpdate, ADumpHasNoContentEncoding) {
  start();
  const HttpReply reply =
      send({.url = "http://" + server->host() + "/3.7.3/dumps/" + dump_names().front() + ".gz",
            .accept_gzip = true});
  EXPECT_EQ(reply.headers.at("content-type"), "application/gzip");
  EXPECT_FALSE(reply.headers.contains("content-encoding"));
  EXPECT_EQ(reply.body.substr(0, 2), "\x1f\x8b");
}

TEST_F(ServerUpdate, AnUnknownDumpIsNotFound) {
  start();
  EXPECT_EQ(ask_as_nobody("/3.7.3/dumps/nergens.gz").status, 404);
  EXPECT_EQ(ask_as_nobody("/3.7.3/dumps/" + dump_names().front()).status, 404);
  EXPECT_EQ(ask_as_nobody("/3.7.3/dumps/").status, 404);
}

TEST_F(ServerUpdate, NamesNewsgroupsThatAreNewToTheClient) {
  start();
  const std::string first = body_of(availability, {{"lc", "0"}});
  EXPECT_THAT(find_in_xml(first, "/Events/Event[@Code='4'][GroupID and Name]"), SizeIs(320));
  const std::string stamp = latest();
  EXPECT_THAT(find_in_xml(body_of(availability, {{"lc", stamp}}), "//Event[@Code='4']"), IsEmpty());
  server->advance({.newsgroups = 2});
  EXPECT_THAT(find_in_xml(body_of(availability, {{"lc", stamp}}), "//Event[@Code='4']/GroupID"),
              ElementsAre("321", "322"));
}

TEST_F(ServerUpdate, CountsMembersAndThoseOnline) {
  start({"--postings", "5", "--now", std::to_string(then)});
  const std::string before = body_of(availability, {{"lc", "0"}});
  const std::int64_t members = std::stoll(first_in_xml(before, "//Event[@Code='5']/T"));
  const std::int64_t online = std::stoll(first_in_xml(before, "//Event[@Code='5']/N"));
  EXPECT_GT(members, 400);
  EXPECT_GT(online, 1);
  server->add_account("nieuweling", "welkom");
  ask(availability, {{"lc", "1"}}, "nieuweling", "welkom");
  const std::string after = body_of(availability, {{"lc", "0"}});
  EXPECT_EQ(first_in_xml(after, "//Event[@Code='5']/T"), std::to_string(members + 1));
  EXPECT_EQ(first_in_xml(after, "//Event[@Code='5']/N"), std::to_string(online + 1));
}

TEST_F(ServerUpdate, ListsAllNewsgroups) {
  start();
  const std::string reply = body_of("/3.7.3/xml-groups.php");
  EXPECT_THAT(find_in_xml(reply, "/Groups/Group[Name]/@ID"), SizeIs(320));
  EXPECT_EQ(find_in_xml(reply, "/Groups/Group/Name"),
            find_in_xml(body_of(availability, {{"lc", "0"}}), "//Event[@Code='4']/Name"));
}

TEST_F(ServerUpdate, TheSameSeedGivesTheSameData) {
  const std::vector<std::string> options{"--postings",         "40",     "--now",
                                         std::to_string(then), "--seed", "7"};
  start(options);
  const std::vector<std::string> names = dump_names();
  const std::string document = dump(names.front());
  const std::vector<std::int64_t> ids = server->advance({.updated = 5}).updated;
  start(options);
  EXPECT_EQ(dump_names(), names);
  EXPECT_EQ(dump(names.front()), document);
  EXPECT_EQ(server->advance({.updated = 5}).updated, ids);
  start({"--postings", "40", "--now", std::to_string(then), "--seed", "8"});
  EXPECT_NE(dump_names(), names);
}

TEST_F(ServerUpdate, TheSampleDataIsVaried) {
  start({"--postings", "3000", "--chunk-size", "3000", "--now", std::to_string(then)});
  const std::string document = dump(dump_names().front());
  for (const char *category : {"0", "1", "2", "3"})
    EXPECT_GT(find_in_xml(document, std::string("//Event[Cat=") + category + "]").size(), 200U);
  for (const char *state : {"-3", "-2", "-1", "0", "1", "2", "3"})
    EXPECT_FALSE(find_in_xml(document, std::string("//Event[Status=") + state + "]").empty());
  for (const char *absent : {"FName", "Link", "SCat", "Tag"}) {
    const std::string condition = std::string("//Event[not(") + absent + ")]";
    EXPECT_FALSE(find_in_xml(document, condition).empty()) << absent;
  }
  for (const char *character : {"&amp;", "&gt;", "&lt;", "é", "ø", "ů"})
    EXPECT_NE(document.find(character), std::string::npos) << character;
  EXPECT_FALSE(find_in_xml(document, "//Event[string-length(Title)>150]").empty());
  EXPECT_FALSE(find_in_xml(document, "//Event[starts-with(Link,'www.')]").empty());
  const std::string fortnight = std::to_string(then - std::int64_t{14} * 24 * 3600);
  const auto young = find_in_xml(document, "//Event[Stamp>=" + fortnight + "]").size();
  EXPECT_GT(young, 2700U);
  EXPECT_LT(young, 3000U);
  EXPECT_THAT(
      find_in_xml(document, "//Event[Stamp>Updated or Updated>" + std::to_string(then) + "]"),
      IsEmpty());
}

/** Sub-categories and tags must exist in the vocabulary of their category. */
TEST_F(ServerUpdate, TheSampleDataUsesTheVocabulary) {
  start({"--postings", "2000", "--chunk-size", "2000"});
  const std::string document = dump(dump_names().front());
  constexpr std::array<std::array<int, 4>, 4> counts{
      {{6, 6, 6, 28}, {5, 5, 10, 21}, {10, 5, 10, 0}, {6, 26, 0, 0}}};
  for (std::size_t category = 0; category < counts.size(); ++category) {
    const std::string events = "//Event[Cat=" + std::to_string(category) + "]";
    for (const std::string &number : find_in_xml(document, events + "/SCat"))
      EXPECT_LT(std::stoi(number), counts[category][0]);
    for (const std::string &tags : find_in_xml(document, events + "/Tags")) {
      EXPECT_TRUE(tags.starts_with('|') && tags.ends_with('|')) << tags;
      for (std::size_t place = 1; place < tags.size(); place = tags.find('|', place) + 1) {
        const auto group = static_cast<std::size_t>(tags[place] - 'a');
        ASSERT_LT(group, 4U) << tags;
        EXPECT_LT(std::stoi(tags.substr(place + 1)), counts[category][group]) << tags;
      }
    }
  }
  EXPECT_THAT(find_in_xml(document, "//Event[not(SCat) and not(contains(Tags,'|a'))]"), IsEmpty());
}

TEST_F(ServerUpdate, TheControlPortAddsAndChangesPostings) {
  start();
  const std::string before = latest();
  const std::int64_t id = server->add_posting({{"Title", "Één & <ander>"},
                                               {"Cat", "2"},
                                               {"SCat", "3"},
                                               {"Tags", "|a3|"},
                                               {"Groups", "|7|"}});
  const std::string event = "//Event[PostID=" + std::to_string(id) + "]";
  EXPECT_EQ(first_in_xml(dump(dump_names(before).front()), event + "/Title"), "Één & <ander>");
  const std::string between = latest();
  server->change_posting(id, {{"Status", "-2"}});
  const std::string document = dump(dump_names(between).front());
  EXPECT_EQ(first_in_xml(document, event + "/Status"), "-2");
  EXPECT_EQ(first_in_xml(document, event + "/Title"), "Één & <ander>");
  EXPECT_THROW(server->add_posting({{"Titel", "x"}}), std::runtime_error);
  EXPECT_THROW(server->change_posting(99999, {{"Title", "x"}}), std::runtime_error);
}

TEST_F(ServerUpdate, CharactersNotAllowedInXmlAreRemoved) {
  start();
  const std::string before = latest();
  server->add_posting({{"Title", "a\x01\xff"
                                 "b\xEF\xBF\xBF"
                                 "c"},
                       {"Cat", "0"}});
  EXPECT_EQ(first_in_xml(dump(dump_names(before).front()), "//Title"), "a\xEF\xBF\xBD"
                                                                       "bc");
}

TEST_F(ServerUpdate, KeepsEverythingInItsDatabase) {
  const std::string file = (sandbox.home() / "zox.db").string();
  start({"--postings", "30", "--database", file});
  server->advance({.added = 4});
  const std::vector<std::string> names = dump_names();
  const std::string document = dump(names.back());
  ASSERT_EQ(server->stop(), 0);
  start({"--postings", "30", "--database", file});
  EXPECT_EQ(dump_names(), names);
  EXPECT_EQ(dump(names.back()), document);
  EXPECT_EQ(ids_in_dumps("0").size(), 34U);
}

TEST_F(ServerUpdate, AnEmptyServiceNamesNoDumps) {
  start({"--postings", "0"});
  const std::string reply = body_of(availability, {{"lc", "0"}});
  EXPECT_EQ(stamp_of(reply), "0");
  EXPECT_THAT(find_in_xml(reply, "//Event[@Code='7']"), IsEmpty());
}

TEST_F(ServerUpdate, TheControlPortAdvancesTheClock) {
  start({"--postings", "5", "--now", std::to_string(then)});
  EXPECT_EQ(server->advance({.added = 1, .seconds = 3600}).stamp, then + 3600);
}

}  // namespace
}  // namespace velkor::test
