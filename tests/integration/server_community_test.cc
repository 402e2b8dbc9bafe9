/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Kudos, warnings, profiles and signing up. */
#include <gmock/gmock.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char *kudos = "/3.7.3/xml-kudos.php";
constexpr const char *warning = "/3.7.3/xml-warn.php";
constexpr const char *profile = "/3.7.3/xml-user.php";
constexpr const char *sign_up = "/3.7.3/xml-signup.php";
constexpr std::int64_t then = 1'227'351'600;

class ServerCommunity : public ServerTest {
protected:
  ServerCommunity() {
    start({"--postings", "30", "--now", std::to_string(then)});
    server->add_account("anna", "kwartel");
    posting =
        std::to_string(server->add_posting({{"Title", "x"}, {"Poster", "anna"}, {"Kudos", "12"}}));
  }

  std::string give(const std::string &value, const std::string &id) {
    return body_of(kudos, {{"mode", "give"}, {"id", id}, {"kudos", value}});
  }
  std::string get() { return body_of(kudos, {{"mode", "get"}, {"id", posting}}); }
  std::string warn(const std::string &id, const std::string &reaction) {
    return body_of(warning, {{"id", id}, {"forumid", reaction}, {"reason", "spam & zo"}});
  }
  std::string register_as(const std::string &name, const std::string &password = "wachtwoord",
                          const std::string &email = "a@post.example") {
    return ask_as_nobody(sign_up, {{"mode", "signup"}, {"u", name}, {"p", password}, {"e", email}})
        .body;
  }

  std::string posting;
};

TEST_F(ServerCommunity, KudosCountOncePerMember) {
  EXPECT_EQ(get(), "12*0");
  EXPECT_EQ(give("3", posting), "OK");
  EXPECT_EQ(get(), "15*3");
  EXPECT_EQ(give("3", posting), "DUPE");
  EXPECT_EQ(get(), "15*3");
  EXPECT_EQ(ask(kudos, {{"mode", "get"}, {"id", posting}}, "anna", "kwartel").body, "15*0");
}

TEST_F(ServerCommunity, InvalidKudosAreRejected) {
  EXPECT_EQ(ask(kudos, {{"mode", "give"}, {"id", posting}, {"kudos", "1"}}, "anna", "kwartel").body,
            "FAIL");
  EXPECT_EQ(give("0", posting), "FAIL");
  EXPECT_EQ(give("11", posting), "FAIL");
  EXPECT_EQ(give("1", "99999"), "FAIL");
  EXPECT_EQ(body_of(kudos, {{"mode", "get"}, {"id", "99999"}}), "FAIL");
  EXPECT_EQ(body_of(kudos, {{"mode", "neem"}, {"id", posting}}), "FAIL");
  EXPECT_EQ(get(), "12*0");
}

TEST_F(ServerCommunity, KudosStayWithinTheRangeOfTheirType) {
  const std::string highest = "9223372036854775807";
  const std::string lowest = "-9223372036854775808";
  const auto give_to = [&](const std::string &kudos_so_far, const std::string &value) {
    const std::string id = std::to_string(server->add_posting({{"Kudos", kudos_so_far}}));
    EXPECT_EQ(give(value, id), "OK");
    return body_of(kudos, {{"mode", "get"}, {"id", id}});
  };
  EXPECT_EQ(give_to(highest, "3"), highest + "*3");
  EXPECT_EQ(give_to(highest, "-3"), "9223372036854775804*-3");
  EXPECT_EQ(give_to(lowest, "-3"), lowest + "*-3");
  EXPECT_EQ(give_to(lowest, "3"), "-9223372036854775805*3");
  EXPECT_EQ(give(lowest, posting), "FAIL");
}

TEST_F(ServerCommunity, WarningsAreNumberedAndAcceptedOnce) {
  EXPECT_EQ(warn(posting, "0"), "OK1");
  EXPECT_EQ(warn(posting, "0"), "DUPE");
  EXPECT_EQ(warn("1", "0"), "OK2");
  EXPECT_EQ(
      ask(warning, {{"id", posting}, {"forumid", "0"}, {"reason", "x"}}, "anna", "kwartel").body,
      "OK3");
}

TEST_F(ServerCommunity, AWarningMayBeAboutAReaction) {
  const std::string reaction =
      body_of("/3.7.3/xml-forum.php", {{"m", "add"}, {"b", "x"}, {"s", posting}}).substr(2);
  EXPECT_EQ(warn(posting, "0"), "OK1");
  EXPECT_EQ(warn(posting, reaction), "OK2");
  EXPECT_EQ(warn(posting, reaction), "DUPE");
}

TEST_F(ServerCommunity, WarningsAboutUnknownPostingsFail) {
  EXPECT_EQ(warn("99999", "0"), "FAIL");
  EXPECT_EQ(warn(posting, "99999"), "FAIL");
}

TEST_F(ServerCommunity, AProfileOmitsEmptyFields) {
  server->command(
      "POST", "/account",
      {{"user", "anna"}, {"Info", "Één & ander"}, {"Rank", "4"}, {"EMail", "a@x.example"}});
  give("3", posting);
  const std::string reply = body_of(profile, {{"user", "anna"}});
  const auto values_of = [&](const char *name) {
    return find_in_xml(reply, std::string("/UserInfo/") + name);
  };
  EXPECT_THAT(values_of("Name"), ElementsAre("anna"));
  EXPECT_THAT(values_of("Stamp"), ElementsAre(std::to_string(then)));
  EXPECT_THAT(values_of("Spots"), ElementsAre("1"));
  EXPECT_THAT(values_of("Posts"), ElementsAre("0"));
  EXPECT_THAT(values_of("Kudos"), ElementsAre("15"));
  EXPECT_THAT(values_of("Received"), ElementsAre("15"));
  EXPECT_THAT(values_of("Given"), ElementsAre("0"));
  EXPECT_THAT(values_of("Rank"), ElementsAre("4"));
  EXPECT_THAT(values_of("Info"), ElementsAre("Één & ander"));
  EXPECT_THAT(values_of("EMail"), ElementsAre("a@x.example"));
  EXPECT_THAT(values_of("Status"), ElementsAre("0"));
  EXPECT_THAT(values_of("PStat"), ElementsAre("0"));
  for (const char *empty : {"Avatar", "Site", "IM", "ISP", "NS", "Hobby"})
    EXPECT_THAT(values_of(empty), IsEmpty()) << empty;
}

TEST_F(ServerCommunity, AProfileCountsTheActivityOfItsMember) {
  give("3", posting);
  body_of("/3.7.3/xml-forum.php", {{"m", "add"}, {"b", "x"}, {"s", posting}});
  const std::string reply = body_of(profile, {{"user", "demo"}});
  EXPECT_EQ(first_in_xml(reply, "//Given"), "3");
  EXPECT_EQ(first_in_xml(reply, "//Posts"), "1");
}

TEST_F(ServerCommunity, UnknownMembersHaveNoProfile) {
  EXPECT_EQ(body_of(profile, {{"user", "niemand"}}), "");
  EXPECT_EQ(body_of(profile), "");
  EXPECT_THROW(server->command("POST", "/account", {{"user", "anna"}, {"Schoenmaat", "42"}}),
               std::runtime_error);
}

TEST_F(ServerCommunity, ANewMemberCanLogIn) {
  EXPECT_EQ(register_as("nieuw"), "OK");
  EXPECT_TRUE(is_xml(ask("/3.7.3/xml-groups.php", {}, "nieuw", "wachtwoord").body));
  EXPECT_THAT(find_in_xml(body_of(profile, {{"user", "nieuw"}}), "//EMail"), IsEmpty());
}

TEST_F(ServerCommunity, NamesAreUniqueRegardlessOfCase) {
  EXPECT_EQ(register_as("anna"), "E1");
  EXPECT_EQ(register_as("ANNA"), "E1");
}

TEST_F(ServerCommunity, BannedAddressesCannotSignUp) {
  server->command("POST", "/address", {{"address", "127.0.0.1"}, {"banned", "1"}});
  EXPECT_EQ(register_as("nieuw"), "E2");
  server->command("POST", "/address", {{"address", "127.0.0.1"}, {"banned", "0"}});
  EXPECT_EQ(register_as("nieuw"), "OK");
}

TEST_F(ServerCommunity, AnAddressCanSignUpOnceInTwoDays) {
  EXPECT_EQ(register_as("een"), "OK");
  EXPECT_EQ(register_as("twee"), "E3");
  server->advance({.seconds = 48 * 3600 - 1});
  EXPECT_EQ(register_as("twee"), "E3");
  server->advance({.seconds = 1});
  EXPECT_EQ(register_as("twee"), "OK");
}

TEST_F(ServerCommunity, RequestsOfMembersStartThePauseToo) {
  body_of(profile);
  EXPECT_EQ(register_as("een"), "E3");
  server->command("POST", "/signup-pause", {{"hours", "0"}});
  EXPECT_EQ(register_as("een"), "OK");
}

TEST_F(ServerCommunity, ThePauseIsAnOption) {
  start({"--postings", "1", "--signup-pause", "0"});
  EXPECT_EQ(register_as("een"), "OK");
  EXPECT_EQ(register_as("twee"), "OK");
}

TEST_F(ServerCommunity, InvalidAccountsAreRejected) {
  EXPECT_EQ(register_as(""), "E0");
  EXPECT_EQ(register_as("a:b"), "E0");
  EXPECT_EQ(register_as("a|b"), "E0");
  EXPECT_EQ(register_as("a\nb"), "E0");
  EXPECT_EQ(register_as(std::string(33, 'a')), "E0");
  EXPECT_EQ(register_as("\xff\xfe"), "E0");
  EXPECT_EQ(register_as("nieuw", "abc"), "E0");
  EXPECT_EQ(register_as("nieuw", "wachtwoord", "geen adres"), "E0");
  EXPECT_EQ(ask_as_nobody(sign_up, {{"u", "nieuw"}, {"p", "wachtwoord"}, {"e", "a@b"}}).body, "E0");
}

TEST_F(ServerCommunity, TheLogHidesThePasswordOfASignup) {
  register_as("nieuw", "diepgeheim");
  EXPECT_EQ(server->command("GET", "/requests").find("diepgeheim"), std::string::npos);
  EXPECT_EQ(server->requests(sign_up).back().parameters[1].second, "nieuw");
}

}  // namespace
}  // namespace velkor::test
