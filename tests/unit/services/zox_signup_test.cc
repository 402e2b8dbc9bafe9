/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_signup.h>

#include <velkor/zox_http_curl.h>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;

constexpr const char *path = "/3.7.3/xml-signup.php";

class ZoxSignup : public ServiceTest {
protected:
  ZoxErrorCode answered(const std::string &reply) {
    server.reply(path, reply);
    return register_user();
  }
  ZoxErrorCode register_user() {
    return zox_signup_register("naam", "geheim & zo", "n@mail.example", message);
  }
};

TEST_F(ZoxSignup, SendsTheUserWithoutCredentials) {
  core->config->password = zox_string_new("wachtwoord");
  EXPECT_EQ(answered("OK"), 0U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_THAT(
      sent(),
      ElementsAre("/3.7.3/xml-signup.php mode=signup u=naam p=geheim & zo e=n@mail.example"));
  EXPECT_EQ(server.requests().front().headers.count("authorization"), 0U);
  EXPECT_EQ(text_of(core->config->username), "gebruiker");
}

TEST_F(ZoxSignup, NeedsNoUserInTheSettings) {
  replace_string(core->config->username, nullptr);
  EXPECT_EQ(answered("OK"), 0U);
}

TEST_F(ZoxSignup, JudgesTheFirstTwoCharacters) {
  const std::pair<const char *, ZoxErrorCode> answers[] = {
      {"OK", 0},         {"OK en welkom", 0}, {"E0", 20}, {"E1", 21},
      {"E1: bezet", 21}, {"E2", 22},          {"E3", 23}};
  for (const auto &[reply, code] : answers) {
    EXPECT_EQ(answered(reply), code) << reply;
    EXPECT_EQ(message.text(), "(null)");
  }
}

TEST_F(ZoxSignup, QuotesAnAnswerThatItDoesNotUnderstand) {
  for (const std::string reply : {"e1", "ok", "E4", "E", " OK", "100% %s fout"}) {
    EXPECT_EQ(answered(reply), 11U) << reply;
    EXPECT_EQ(message.text(), "Onjuiste response van server :\n" + reply);
  }
}

TEST_F(ZoxSignup, TakesAFailedRequestForAnEmptyAnswer) {
  EXPECT_EQ(answered(""), 11U);
  EXPECT_EQ(message.text(), "Onjuiste response van server :\n");
  server.reply(path, StubReply{.close_at_once = true});
  EXPECT_EQ(register_user(), 11U);
  EXPECT_EQ(message.text(), "Onjuiste response van server :\n");
  zox_http_set_hosts("127.0.0.1:1", nullptr);
  EXPECT_EQ(register_user(), 11U);
  EXPECT_EQ(message.text(), "Onjuiste response van server :\n");
}

TEST_F(ZoxSignup, JudgesStatusWordsAndNoticesByTheirText) {
  EXPECT_EQ(answered("UNAUTH"), 11U);
  EXPECT_EQ(message.text(), "Onjuiste response van server :\nUNAUTH");
  EXPECT_EQ(answered("MSGOnderhoud"), 11U);
  EXPECT_EQ(message.text(), "Onjuiste response van server :\nOnderhoud");
  EXPECT_EQ(answered("MSGE2 nog niet"), 22U);
  EXPECT_EQ(message.text(), "E2 nog niet");
}

TEST_F(ZoxSignup, JudgesABodyThatBrokeOff) {
  server.reply(path, StubReply{.body = "OK", .claim_length = 500});
  EXPECT_EQ(register_user(), 0U);
}

}  // namespace
}  // namespace velkor::test
