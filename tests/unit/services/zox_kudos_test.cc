/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_kudos.h>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;

constexpr const char *path = "/3.7.3/xml-kudos.php";

using ZoxKudos = ServiceTest;

TEST_F(ZoxKudos, GivesKudosWhateverTheReply) {
  server.reply(path, "bedankt");
  EXPECT_EQ(zox_kudos_give(G_MAXINT32, G_MININT32, message), 0U);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_THAT(sent(),
              ElementsAre("/3.7.3/xml-kudos.php mode=give id=2147483647 kudos=-2147483648"));
}

TEST_F(ZoxKudos, TellsWhatTheServerAnswers) {
  struct Case {
    const char *reply;
    ZoxAnswer answer;
  };
  for (const Case &expected : {Case{"OK", ZOX_ANSWER_DONE}, Case{"DUPE", ZOX_ANSWER_DUPLICATE},
                               Case{"FAIL", ZOX_ANSWER_REFUSED}, Case{"DUPES", ZOX_ANSWER_UNKNOWN},
                               Case{"bedankt", ZOX_ANSWER_UNKNOWN}}) {
    ZoxAnswer answer = ZOX_ANSWER_NONE;
    server.reply(path, expected.reply);
    EXPECT_EQ(zox_kudos_give_answered(5, -1, &answer, message), 0U);
    EXPECT_EQ(answer, expected.answer) << expected.reply;
    EXPECT_EQ(message.text(), "(null)");
  }
  EXPECT_EQ(sent().front(), "/3.7.3/xml-kudos.php mode=give id=5 kudos=-1");
}

TEST_F(ZoxKudos, AFailedRequestHasNoAnswer) {
  ZoxAnswer answer = ZOX_ANSWER_DONE;
  server.reply(path, "MSGOnderhoud");
  EXPECT_EQ(zox_kudos_give_answered(5, 1, &answer, message), 29U);
  EXPECT_EQ(answer, ZOX_ANSWER_NONE);
  EXPECT_EQ(message.text(), "Onderhoud");
}

TEST_F(ZoxKudos, ReadsTheNumbersAroundTheFirstStar) {
  struct Case {
    const char *reply;
    gint32 first;
    gint32 second;
  };
  for (const Case &expected :
       {Case{"12*3", 12, 3}, Case{"*", 0, 0}, Case{" -4 x*+5y*6", -4, 5}, Case{"x*", 0, 0}}) {
    gint32 first = 77;
    gint32 second = 77;
    server.reply(path, expected.reply);
    EXPECT_EQ(zox_kudos_get(5, &first, &second, message), 0U) << expected.reply;
    EXPECT_EQ(first, expected.first) << expected.reply;
    EXPECT_EQ(second, expected.second) << expected.reply;
    EXPECT_EQ(message.text(), "(voorheen)");
  }
  EXPECT_EQ(sent().front(), "/3.7.3/xml-kudos.php mode=get id=5");
}

TEST_F(ZoxKudos, CannotReadAReplyWithoutStar) {
  gint32 first = 77;
  gint32 second = 78;
  server.reply(path, "12 3");
  EXPECT_EQ(zox_kudos_get(5, &first, &second, message), 11U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_EQ(first, 77);
  EXPECT_EQ(second, 78);
}

}  // namespace
}  // namespace velkor::test
