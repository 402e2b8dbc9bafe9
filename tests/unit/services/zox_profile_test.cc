/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_profile.h>

#include "services/profile_document.h"
#include "tests/support/fresh_process.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ZoxProfileGet : public ServiceTest {
protected:
  /** Asks for a profile that the server answers so. */
  ZoxErrorCode get(const std::string &reply) {
    server.reply("/3.7.3/xml-user.php", reply);
    ZoxProfile *received = nullptr;
    ZoxErrorCode code = 0;
    said = standard_error_of([&] { code = zox_profile_get("Jan & co", &received, message); });
    profile.reset(received);
    return code;
  }

  LogCapture log;
  std::string said;
  OwnedProfile profile;
};

TEST_F(ZoxProfileGet, ReadsAllElements) {
  EXPECT_EQ(get(read_file(VELKOR_TEST_DIR "/fixtures/profile.xml")), 0U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-user.php user=Jan & co"));
  ASSERT_NE(profile, nullptr);
  EXPECT_STREQ(profile->name, "Jan & co");
  EXPECT_EQ(profile->stamp, -2);
  EXPECT_EQ(profile->posts, 3U);
  EXPECT_EQ(profile->spots, 4U);
  EXPECT_EQ(profile->kudos, 5U);
  EXPECT_EQ(profile->kudosGiven, 6U);
  EXPECT_EQ(profile->kudosReceived, 7U);
  EXPECT_EQ(profile->rank, 4294967288U);
  EXPECT_STREQ(profile->email, "jan@mail.example");
  EXPECT_STREQ(profile->info, "<b>info</b>");
  EXPECT_STREQ(profile->avatar, "avatar");
  EXPECT_EQ(profile->status, 12U);
  EXPECT_STREQ(profile->site, "site");
  EXPECT_STREQ(profile->im, "im");
  EXPECT_STREQ(profile->isp, "isp");
  EXPECT_STREQ(profile->newsServer, "ns");
  EXPECT_STREQ(profile->hobby, "hobby");
  EXPECT_EQ(profile->profileStatus, 18U);
}

TEST_F(ZoxProfileGet, ComparesNamesWithoutLetterCaseAndTakesTheLast) {
  EXPECT_EQ(get("<userINFO><NAME>a</NAME><name>b</name><Other>x</Other></userINFO>"), 0U);
  ASSERT_NE(profile, nullptr);
  EXPECT_STREQ(profile->name, "b");
  EXPECT_EQ(profile->email, nullptr);
  EXPECT_EQ(profile->stamp, 0);
}

TEST_F(ZoxProfileGet, YieldsNoProfileWithAnEmptyName) {
  EXPECT_EQ(get("<UserInfo><EMail>e</EMail><Name/><Info>i</Info></UserInfo>"), 33U);
  EXPECT_EQ(profile, nullptr);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_EQ(said, "");
}

TEST_F(ZoxProfileGet, YieldsAProfileWithoutAName) {
  EXPECT_EQ(get("<UserInfo><Posts>1</Posts></UserInfo>"), 0U);
  EXPECT_EQ(profile->name, nullptr);
}

TEST_F(ZoxProfileGet, TellsOfAnUnusableReply) {
  EXPECT_EQ(get(""), 33U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_EQ(said, "zox_profile_parse(): empty document!\n");
  EXPECT_EQ(get("onbekend"), 33U);
  EXPECT_EQ(said, "zox_profile_parse(): empty document!\n");
  EXPECT_EQ(get("<User/>"), 33U);
  EXPECT_EQ(said, "zox_profile_parse(): document of the wrong type, root node != UserInfo");
  EXPECT_EQ(get("<UserInfo/>"), 33U);
  EXPECT_EQ(said, "");
  EXPECT_EQ(profile, nullptr);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxProfileGet, YieldsNoProfileWithAnEmptyTextInTolerantMode) {
  const Tolerance tolerance;
  EXPECT_EQ(get("<UserInfo><Name>n</Name><IM/></UserInfo>"), 33U);
  EXPECT_EQ(profile, nullptr);
  EXPECT_THAT(log.warnings(), ElementsAre("zox_profile_get(): element IM zonder tekst\n"));
}

using ZoxProfileDeathTest = ZoxProfileGet;

TEST_F(ZoxProfileDeathTest, AssertsTheTextsButTheName) {
  const FreshProcess fresh(sandbox);
  server.reply("/3.7.3/xml-user.php", "<UserInfo><Name>n</Name><Hobby/></UserInfo>");
  ZoxProfile *received = nullptr;
  EXPECT_DEATH(zox_profile_get("n", &received, message),
               "zox_profile_get: assertion failed: \\(tmp\\)");
}

TEST_F(ZoxProfileDeathTest, AssertsItsArguments) {
  const FreshProcess fresh(sandbox);
  ZoxProfile *received = nullptr;
  EXPECT_DEATH(zox_profile_get(nullptr, &received, message), "assertion failed: \\(username\\)");
  EXPECT_DEATH(zox_profile_get("n", nullptr, message), "assertion failed: \\(profile\\)");
  EXPECT_DEATH(zox_profile_get("n", &received, nullptr), "assertion failed: \\(errmsg\\)");
}

}  // namespace
}  // namespace velkor::test
