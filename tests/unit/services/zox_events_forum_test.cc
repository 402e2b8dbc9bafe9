/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_forum.h>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;

constexpr const char *fetch_path = "/3.7.3/xml-dyn.php";
constexpr const char *forum = "<Forum><Event Code=\"1\"><MessID>1</MessID><Author>a</Author>"
                              "</Event><Event Code=\"0\"><Kudos>3</Kudos></Event></Forum>";

using ZoxEventsForum = ServiceTest;

TEST_F(ZoxEventsForum, FetchesAForumIntoTheCachedPosting) {
  cache(5);
  server.reply(fetch_path, forum);
  EXPECT_EQ(zox_events_forum_fetch(5, 1200000000, message), 0U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-dyn.php id=5 lastcheck=1200000000"));
  const OwnedEvent event = cached(5);
  EXPECT_EQ(event->kudos, 3);
  EXPECT_EQ(text_of(event->title), "Titel");
  ASSERT_NE(event->forum, nullptr);
  EXPECT_EQ(g_slist_length(event->forum->reactions), 1U);
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.posts.gz")));
}

TEST_F(ZoxEventsForum, SendsNumbersInFull) {
  cache(G_MININT32);
  server.reply(fetch_path, forum);
  EXPECT_EQ(zox_events_forum_fetch(G_MININT32, -1234567890, message), 0U);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-dyn.php id=-2147483648 lastcheck=-1234567890"));
}

TEST_F(ZoxEventsForum, ReplacesTheEarlierForum) {
  cache(5);
  server.reply_once(fetch_path, forum);
  server.reply_once(fetch_path, "<Forum><Event Code=\"4\"><Stamp>9</Stamp></Event></Forum>");
  EXPECT_EQ(zox_events_forum_fetch(5, 0, message), 0U);
  EXPECT_EQ(zox_events_forum_fetch(5, 0, message), 0U);
  const OwnedEvent event = cached(5);
  EXPECT_EQ(event->forum->reactions, nullptr);
  EXPECT_EQ(event->forum->stamp, 9);
  EXPECT_EQ(event->kudos, 3);
}

TEST_F(ZoxEventsForum, AsksForNothingThatIsNotCached) {
  const std::string said =
      standard_output_of([this] { EXPECT_EQ(zox_events_forum_fetch(5, 0, message), 12U); });
  EXPECT_THAT(said, MatchesRegex("zox_events_forum:[0-9]+ postid = 5\n"));
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_TRUE(server.requests().empty());
}

TEST_F(ZoxEventsForum, KeepsTheForumWhenAFetchFails) {
  cache(5);
  server.reply_once(fetch_path, forum);
  server.reply_once(fetch_path, "<Forum/>");
  server.reply_once(fetch_path, "MSGOnderhoud");
  EXPECT_EQ(zox_events_forum_fetch(5, 0, message), 0U);
  {
    const LogCapture log;
    EXPECT_EQ(zox_events_forum_fetch(5, 0, message), 11U);
  }
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_EQ(zox_events_forum_fetch(5, 0, message), 29U);
  EXPECT_EQ(message.text(), "Onderhoud");
  const OwnedEvent event = cached(5);
  ASSERT_NE(event->forum, nullptr);
  EXPECT_EQ(g_slist_length(event->forum->reactions), 1U);
}

TEST_F(ZoxEventsForum, PostsAReactionWithNetworkLineEnds) {
  server.reply("/3.7.3/xml-forum.php", "wat dan ook");
  EXPECT_EQ(zox_events_forum_post("een & twee\n\ndrie\n", 5, 77, message), 0U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-forum.php m=add b=een & twee\r\n\r\ndrie\r\n s=5"));
}

TEST_F(ZoxEventsForum, PostsAnEmptyReaction) {
  server.reply("/3.7.3/xml-forum.php", "OK");
  EXPECT_EQ(zox_events_forum_post("", 5, 0, message), 0U);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-forum.php m=add b= s=5"));
}

TEST_F(ZoxEventsForum, TellsWhatTheServerAnswersToAReaction) {
  struct Case {
    const char *reply;
    ZoxAnswer answer;
    guint32 id;
  };
  for (const Case &expected :
       {Case{"OK17", ZOX_ANSWER_DONE, 17}, Case{"OK", ZOX_ANSWER_DONE, 0},
        Case{"LOCKED", ZOX_ANSWER_LOCKED, 0}, Case{"NOTFOUND", ZOX_ANSWER_NOT_FOUND, 0},
        Case{"FAIL", ZOX_ANSWER_REFUSED, 0}, Case{"wat dan ook 3", ZOX_ANSWER_UNKNOWN, 0}}) {
    ZoxAnswer answer = ZOX_ANSWER_NONE;
    guint32 id = 77;
    server.reply("/3.7.3/xml-forum.php", expected.reply);
    EXPECT_EQ(zox_events_forum_react(5, 0, "een\ntwee", &answer, &id, message), 0U);
    EXPECT_EQ(answer, expected.answer) << expected.reply;
    EXPECT_EQ(id, expected.id) << expected.reply;
    EXPECT_EQ(message.text(), "(null)");
  }
  EXPECT_EQ(sent().front(), "/3.7.3/xml-forum.php m=add b=een\r\ntwee s=5");
}

TEST_F(ZoxEventsForum, RepliesToAReaction) {
  ZoxAnswer answer = ZOX_ANSWER_NONE;
  server.reply("/3.7.3/xml-forum.php", "OK18");
  EXPECT_EQ(zox_events_forum_react(5, 17, "ja", &answer, nullptr, nullptr), 0U);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-forum.php m=add b=ja s=5 r=17"));
}

TEST_F(ZoxEventsForum, AFailedReactionHasNoAnswer) {
  ZoxAnswer answer = ZOX_ANSWER_DONE;
  guint32 id = 77;
  server.reply("/3.7.3/xml-forum.php", "BAN");
  EXPECT_EQ(zox_events_forum_react(5, 0, "ja", &answer, &id, message), 3U);
  EXPECT_EQ(answer, ZOX_ANSWER_NONE);
  EXPECT_EQ(id, 0U);
}

using ZoxEventsForumDeathTest = LibraryTest;

TEST_F(ZoxEventsForumDeathTest, AssertsItsArguments) {
  EXPECT_DEATH(zox_events_forum_fetch_async(1, 0, nullptr, nullptr), "assertion failed: \\(cb\\)");
  EXPECT_DEATH(zox_events_forum_post(nullptr, 1, 0, nullptr), "assertion failed: \\(bron\\)");
}

}  // namespace
}  // namespace velkor::test
