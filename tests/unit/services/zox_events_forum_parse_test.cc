/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_forum.h>

#include "support/slist.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ZoxEventsForumParse : public LibraryTest {
protected:
  gint32 parse(const std::string &reply) {
    const OwnedString text = string_of(reply);
    gint32 result = -1;
    said = standard_error_of([&] { result = zox_events_forum_parse(text.get(), event.get()); });
    return result;
  }

  /** The reactions as "author:kudos". */
  [[nodiscard]] std::vector<std::string> reactions() const {
    std::vector<std::string> texts;
    for (const ZoxReactie *reactie : Items<const ZoxReactie>(event->forum->reactions))
      texts.push_back(text_of(reactie->author) + ":" + std::to_string(reactie->kudos));
    return texts;
  }

  [[nodiscard]] const ZoxReactie &first() const {
    return *static_cast<const ZoxReactie *>(event->forum->reactions->data);
  }

  OwnedEvent event{zox_event_new()};
  LogCapture log;
  QuietXml quiet;
  std::string said;
};

std::string reaction(const std::string &author, int code = 1) {
  return "<Event Code=\"" + std::to_string(code) + "\"><Author>" + author + "</Author></Event>";
}
std::string kudos(const std::string &user, int number) {
  return "<Event Code=\"3\"><User>" + user + "</User><Kudos>" + std::to_string(number) +
         "</Kudos></Event>";
}
std::string in_forum(const std::string &events) {
  return "<Forum>" + events + "</Forum>";
}

TEST_F(ZoxEventsForumParse, ReadsAReaction) {
  EXPECT_EQ(parse(in_forum("<Event Code=\"1\"><MessID>4294967295</MessID><Author>a</Author>"
                           "<BODY><![CDATA[<b>&]]></BODY><Stamp>12</Stamp><Edit>-1</Edit>"
                           "<Reply>3</Reply><avatar>x.png</avatar><Other>o</Other></Event>")),
            0);
  ASSERT_EQ(g_slist_length(event->forum->reactions), 1U);
  EXPECT_EQ(first().messId, 4294967295U);
  EXPECT_EQ(text_of(first().author), "a");
  EXPECT_EQ(text_of(first().body), "<b>&");
  EXPECT_EQ(first().stamp, 12);
  EXPECT_EQ(first().edit, -1);
  EXPECT_EQ(first().reply, 3U);
  EXPECT_EQ(text_of(first().avatar), "x.png");
  EXPECT_EQ(first().kudos, 0U);
}

TEST_F(ZoxEventsForumParse, TakesTheLastOfARepeatedElement) {
  EXPECT_EQ(parse(in_forum("<Event Code=\"1\"><Author>a</Author><Author>b</Author>"
                           "<Body>x</Body><Body/></Event>")),
            0);
  EXPECT_EQ(text_of(first().author), "b");
  EXPECT_EQ(text_of(first().body), "(null)");
}

TEST_F(ZoxEventsForumParse, DropsAWithdrawnReactionOfCodeTwoOnly) {
  const std::string withdrawn = "<Author>w</Author><Edit>-1</Edit></Event>";
  const std::string edited = "<Author>e</Author><Edit>0</Edit></Event>";
  EXPECT_EQ(parse(in_forum("<Event Code=\"2\">" + withdrawn + "<Event Code=\"2\">" + edited +
                           "<Event Code=\"1\">" + withdrawn)),
            0);
  EXPECT_THAT(reactions(), ElementsAre("e:0", "w:0"));
}

TEST_F(ZoxEventsForumParse, ReadsDataOfThePostingAndTheForum) {
  EXPECT_EQ(parse(in_forum("<Event Code=\"0\"><Kudos>1</Kudos><Pars>2</Pars><ParType>3</ParType>"
                           "<BlockSize>4</BlockSize><Status>-2</Status><View>6</View>"
                           "<Locked>7</Locked><Stamp>-8</Stamp><Reason>spam</Reason></Event>"
                           "<Event Code=\"4\"><View>60</View><Reason>dubbel</Reason></Event>")),
            0);
  EXPECT_EQ(event->kudos, 1);
  EXPECT_EQ(event->pars, 2);
  EXPECT_EQ(event->parType, 3);
  EXPECT_EQ(event->blockSize, 4);
  EXPECT_EQ(event->status, -2);
  EXPECT_EQ(event->view, 60);
  EXPECT_EQ(event->locked, 7);
  EXPECT_EQ(event->forum->stamp, -8);
  EXPECT_EQ(text_of(event->reason), "dubbel");
}

TEST_F(ZoxEventsForumParse, GivesKudosToEarlierReactionsOfExactlyThatUser) {
  EXPECT_EQ(parse(in_forum(reaction("a") + reaction("A") + kudos("a", 5) + reaction("a") +
                           kudos("A", 6) + kudos("b", 7) + reaction("b"))),
            0);
  EXPECT_THAT(reactions(), ElementsAre("a:5", "A:6", "a:0", "b:0"));
}

TEST_F(ZoxEventsForumParse, TakesTheLatestKudosOfAUser) {
  EXPECT_EQ(parse(in_forum(reaction("a") + kudos("a", 5) + reaction("a") + kudos("a", 6) +
                           reaction("a"))),
            0);
  EXPECT_THAT(reactions(), ElementsAre("a:6", "a:6", "a:0"));
}

TEST_F(ZoxEventsForumParse, TakesTheLastUserAndNumberOfAKudosElement) {
  EXPECT_EQ(parse(in_forum(reaction("a") + reaction("b") +
                           "<Event Code=\"3\"><User>a</User><Kudos>1</Kudos><User>b</User>"
                           "<Kudos>2</Kudos></Event>" +
                           reaction("c") + "<Event Code=\"3\"><User>c</User></Event>")),
            0);
  EXPECT_THAT(reactions(), ElementsAre("a:0", "b:2", "c:0"));
}

TEST_F(ZoxEventsForumParse, TakesNoUserForNobody) {
  EXPECT_EQ(parse(in_forum("<Event Code=\"1\"/>" + reaction("a") +
                           "<Event Code=\"3\"><User/><Kudos>9</Kudos></Event>" + kudos("x", 1))),
            0);
  EXPECT_THAT(reactions(), ElementsAre("(null):0", "a:0"));
}

TEST_F(ZoxEventsForumParse, IgnoresOtherCodesAndChildren) {
  EXPECT_EQ(parse(in_forum(reaction("a", 5) + reaction("b", -1) + "<Other Code=\"1\"/>tekst" +
                           "<eVENT Code=\" 1x\"><Author>c</Author></eVENT>")),
            0);
  EXPECT_THAT(reactions(), ElementsAre("c:0"));
  EXPECT_THAT(log.warnings(), IsEmpty());
  EXPECT_EQ(said, "");
}

TEST_F(ZoxEventsForumParse, PassesOverAnEventWithoutCode) {
  EXPECT_EQ(parse(in_forum("<Event><Author>x</Author></Event>" + reaction("a"))), 0);
  EXPECT_THAT(reactions(), ElementsAre("a:0"));
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_events_forum_parse(): Event zonder Code overgeslagen\n"));
}

TEST_F(ZoxEventsForumParse, ReplacesTheForumAlsoForAnUnusableReply) {
  EXPECT_EQ(parse(in_forum(reaction("a"))), 0);
  EXPECT_EQ(parse("<Forum><Event Code=\"1\">"), 1);
  EXPECT_EQ(said, "zox_events_forum_parse(): empty document!\n");
  EXPECT_EQ(event->forum->reactions, nullptr);
  EXPECT_EQ(parse("<Events/>"), 2);
  EXPECT_EQ(said, "zox_events_forum_parse(): document of the wrong type, root node != Forum");
  EXPECT_EQ(parse("<Forum/>"), 3);
  EXPECT_EQ(said, "");
  EXPECT_THAT(log.warnings(), ElementsAre("zox_events_forum_parse(): no children of root-node!\n"));
}

TEST_F(ZoxEventsForumParse, AcceptsARootOfOtherLetterCase) {
  EXPECT_EQ(parse("<fORUM>" + reaction("a") + "</fORUM>"), 0);
  EXPECT_THAT(reactions(), ElementsAre("a:0"));
}

TEST_F(ZoxEventsForumParse, ComparesNamesInAReactionWithoutLetterCase) {
  EXPECT_EQ(parse(in_forum("<eVENT Code=\"1\"><aUTHOR>a</aUTHOR></eVENT>")), 0);
  EXPECT_THAT(reactions(), ElementsAre("a:0"));
}

TEST_F(ZoxEventsForumParse, KnowsDataAndKudosByTheirExactNamesOnly) {
  EXPECT_EQ(
      parse(in_forum(reaction("a") + "<Event Code=\"0\"><view>9</view><stamp>8</stamp></Event>"
                                     "<Event Code=\"3\"><user>a</user><Kudos>5</Kudos></Event>"
                                     "<Event Code=\"3\"><User>a</User><kudos>6</kudos></Event>")),
      0);
  EXPECT_EQ(event->view, 0);
  EXPECT_EQ(event->forum->stamp, 0);
  EXPECT_THAT(reactions(), ElementsAre("a:0"));
}

/** The handlers of single elements, called one by one. */
class ForumHandler : public ZoxEventsForumParse {
protected:
  ForumHandler() { event->forum = zox_events_forum_new(); }

  xmlNode *children_of(const std::string &element) {
    document = xml::parse(element);
    return xmlDocGetRootElement(document.get())->children;
  }

  xml::Document document;
};

TEST_F(ForumHandler, AppendsAReaction) {
  for (const char *author : {"a", "b"}) {
    xmlNode *children = children_of(reaction(author));
    zox_events_forum_parse_forum(document.get(), children, event.get(), 0);
  }
  EXPECT_THAT(reactions(), ElementsAre("a:0", "b:0"));
  xmlNode *children = children_of("<Event><Author>c</Author><Edit>-5</Edit></Event>");
  zox_events_forum_parse_forum(document.get(), children, event.get(), 1);
  EXPECT_THAT(reactions(), ElementsAre("a:0", "b:0"));
  zox_events_forum_parse_forum(document.get(), children, event.get(), 0);
  EXPECT_THAT(reactions(), ElementsAre("a:0", "b:0", "c:0"));
  zox_events_forum_parse_forum(document.get(), nullptr, event.get(), 1);
  EXPECT_THAT(reactions(), ElementsAre("a:0", "b:0", "c:0", "(null):0"));
}

TEST_F(ForumHandler, SetsKudosOfTheReactionsSoFar) {
  for (const char *author : {"a", "A", "a"}) {
    xmlNode *children = children_of(reaction(author));
    zox_events_forum_parse_forum(document.get(), children, event.get(), 0);
  }
  zox_events_forum_parse_forum(nullptr, nullptr, event.get(), 0);
  xmlNode *children = children_of(kudos("a", 4));
  zox_events_forum_parse_kudos(document.get(), children, event.get());
  zox_events_forum_parse_kudos(document.get(), nullptr, event.get());
  EXPECT_THAT(reactions(), ElementsAre("a:4", "A:0", "a:4", "(null):0"));
}

TEST_F(ForumHandler, SetsData) {
  xmlNode *children = children_of("<Event><Stamp>7</Stamp><Status>2</Status></Event>");
  zox_events_forum_parse_data(document.get(), children, event.get());
  EXPECT_EQ(event->forum->stamp, 7);
  EXPECT_EQ(event->status, 2);
}

using ZoxEventsForumParseDeathTest = ZoxEventsForumParse;

TEST_F(ZoxEventsForumParseDeathTest, AssertsTheReplyTheForumAndTheCore) {
  EXPECT_DEATH(zox_events_forum_parse(nullptr, event.get()), "assertion failed: \\(buffer\\)");
  const std::string no_forum = "assertion failed: \\(event->forum\\)";
  EXPECT_DEATH(zox_events_forum_parse_forum(nullptr, nullptr, event.get(), 0), no_forum);
  EXPECT_DEATH(zox_events_forum_parse_data(nullptr, nullptr, event.get()), no_forum);
  EXPECT_DEATH(zox_events_forum_parse_kudos(nullptr, nullptr, event.get()), no_forum);
  const OwnedString text = string_of("<Forum/>");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_events_forum_parse(text.get(), event.get());
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor::test
