/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_modje.h>

#include "tests/support/fresh_process.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;

class ZoxModje : public ServiceTest {
protected:
  ZoxErrorCode answered(const char *reply, gint32 forumId = 0) {
    server.reply("/3.7.3/xml-warn.php", reply);
    number = 77;
    return zox_modje_send(7, forumId, "niet aardig", &number, message);
  }

  gint32 number = 0;
};

TEST_F(ZoxModje, SendsAWarningAboutAReaction) {
  EXPECT_EQ(answered("OK17", 55), 0U);
  EXPECT_EQ(number, 17);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-warn.php id=7 forumid=55 reason=niet aardig"));
}

TEST_F(ZoxModje, TakesTheNumberThatFollows) {
  EXPECT_EQ(answered("OK"), 0U);
  EXPECT_EQ(number, 0);
  EXPECT_EQ(answered("OK 4 en meer"), 0U);
  EXPECT_EQ(number, 4);
  EXPECT_EQ(zox_modje_send(7, 0, "reden", nullptr, message), 0U);
}

TEST_F(ZoxModje, TellsOfAWarningGivenBefore) {
  EXPECT_EQ(answered("DUPE", 55), 32U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_EQ(answered("DUPE", 1), 32U);
  EXPECT_EQ(answered("DUPE", 0), 31U);
  EXPECT_EQ(answered("DUPE", -1), 31U);
  EXPECT_EQ(number, 77);
}

TEST_F(ZoxModje, TellsThatTheServersDatabaseFailed) {
  EXPECT_EQ(answered("FAIL"), 4U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_EQ(number, 77);
}

TEST_F(ZoxModje, DoesNotUnderstandAnythingElse) {
  for (const char *reply : {"FAIL!", "DUPE\n", "ok", "O", " OK", "fail"}) {
    EXPECT_EQ(answered(reply), 10U) << reply;
    EXPECT_EQ(number, 77);
  }
}

using ZoxModjeDeathTest = ServiceTest;

TEST_F(ZoxModjeDeathTest, AssertsThePostingAndTheCore) {
  const FreshProcess fresh(sandbox);
  for (const gint32 postId : {0, -1})
    EXPECT_DEATH(zox_modje_send(postId, 0, "", nullptr, nullptr),
                 "assertion failed: \\(post_id > 0\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_modje_send(1, 0, "", nullptr, nullptr);
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor::test
