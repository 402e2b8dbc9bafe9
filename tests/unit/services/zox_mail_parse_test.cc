/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "services/mail_document.h"

#include "support/slist.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ZoxMailParse : public testing::Test {
protected:
  /** The messages of a document as "code from/subject/body@stamp". */
  std::vector<std::string> parse(const std::string &document) {
    const OwnedString text = string_of(document);
    OwnedMail messages;
    said = standard_error_of([&] { messages.reset(zox_mail_parse(text.get())); });
    std::vector<std::string> texts;
    for (const ZoxBericht *bericht : Items<const ZoxBericht>(messages.get()))
      texts.push_back(std::to_string(bericht->code) + " " + text_of(bericht->from) + "/" +
                      text_of(bericht->subject) + "/" + text_of(bericht->body) + "@" +
                      std::to_string(bericht->stamp));
    return texts;
  }

  LogCapture log;
  QuietXml quiet;
  std::string said;
};

std::string event(const std::string &attributes, const std::string &from = "a") {
  return "<Event" + attributes + "><From>" + from +
         "</From><Subject>s</Subject><Body>b</Body><Stamp>1</Stamp></Event>";
}

TEST_F(ZoxMailParse, ReadsReceivedAndSentMessagesInOrder) {
  EXPECT_THAT(parse("<Mail>" + event(" Code=\"2\"", "x") + event(" Code=\"1\"", "y") + "</Mail>"),
              ElementsAre("2 x/s/b@1", "1 y/s/b@1"));
}

TEST_F(ZoxMailParse, PassesOverOtherCodesAndChildren) {
  EXPECT_THAT(parse("<Mail>" + event(" Code=\"0\"") + event(" Code=\"01\"") + event("") +
                    event(" Code=\"3\"") + event(" Code=\" 1\"") + event(" code=\"1\"") +
                    event(" Code=\"\"") + "<Other Code=\"1\"/>tekst</Mail>"),
              IsEmpty());
  EXPECT_EQ(said, "");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxMailParse, ComparesNamesOfRootAndTextsWithoutLetterCase) {
  EXPECT_THAT(parse("<mAIL><Event Code=\"1\"><FROM>a</FROM><subject>s</subject><bODY>b</bODY>"
                    "<STAMP>7</STAMP></Event></mAIL>"),
              ElementsAre("1 a/s/b@7"));
}

TEST_F(ZoxMailParse, KnowsMessagesByTheirExactNameOnly) {
  EXPECT_THAT(parse("<Mail><event Code=\"1\"><From>a</From><Subject>s</Subject><Body>b</Body>"
                    "</event></Mail>"),
              IsEmpty());
}

TEST_F(ZoxMailParse, TakesTheLastOfARepeatedElementAndIgnoresOthers) {
  EXPECT_THAT(parse("<Mail><Event Code=\"1\"><From>a</From><From>z</From><Subject>s</Subject>"
                    "<Body>b</Body><Body/><DateTime>01-01 (00:00)</DateTime></Event></Mail>"),
              ElementsAre("1 z/s/@0"));
}

TEST_F(ZoxMailParse, JoinsCdataAndReadsStampsWithTheirSign) {
  EXPECT_THAT(parse("<Mail><Event Code=\"1\"><From><![CDATA[a&b]]></From><Subject>x &amp; "
                    "<![CDATA[<y>]]></Subject><Body><![CDATA[1]]]]><![CDATA[>2]]></Body>"
                    "<Stamp>4294967295</Stamp></Event></Mail>"),
              ElementsAre("1 a&b/x & <y>/1]]>2@-1"));
}

TEST_F(ZoxMailParse, TakesAnEmptyElementForAnEmptyText) {
  EXPECT_THAT(parse("<Mail><Event Code=\"1\"><From/><Subject></Subject><Body><![CDATA[]]></Body>"
                    "</Event></Mail>"),
              ElementsAre("1 //@0"));
}

TEST_F(ZoxMailParse, TellsOfAnUnusableDocument) {
  EXPECT_THAT(parse(""), IsEmpty());
  EXPECT_EQ(said, "zox_mail_parse(): empty document!\n");
  EXPECT_THAT(parse("<Mail><Event"), IsEmpty());
  EXPECT_EQ(said, "zox_mail_parse(): empty document!\n");
  EXPECT_THAT(parse("<Events/>"), IsEmpty());
  EXPECT_EQ(said, "zox_mail_parse(): document of the wrong type, root node != Events");
  EXPECT_THAT(parse("<Mail/>"), IsEmpty());
  EXPECT_EQ(said, "");
  EXPECT_THAT(log.warnings(), ElementsAre("zox_mail_parse(): no children of root-node!\n"));
}

TEST_F(ZoxMailParse, PassesOverAnIncompleteMessageInTolerantMode) {
  const Tolerance tolerance;
  const std::vector<std::string> incomplete{"<Subject>s</Subject><Body>b</Body>",
                                            "<From>a</From><Body>b</Body>",
                                            "<From>a</From><Subject>s</Subject>"};
  for (const std::string &elements : incomplete) {
    EXPECT_THAT(parse("<Mail><Event Code=\"1\">" + elements + "</Event>" + event(" Code=\"2\"") +
                      "</Mail>"),
                ElementsAre("2 a/s/b@1"))
        << elements;
  }
  EXPECT_THAT(log.warnings(), ::testing::AllOf(::testing::SizeIs(incomplete.size()),
                                               ::testing::Each("zox_mail_parse_bericht(): bericht "
                                                               "zonder From, Subject of Body "
                                                               "overgeslagen\n")));
}

TEST_F(ZoxMailParse, ReadsOneMessageWithoutACode) {
  const xml::Document document = xml::parse(event(" Code=\"1\""));
  const OwnedMail messages(g_slist_prepend(
      nullptr,
      zox_mail_parse_bericht(document.get(), xmlDocGetRootElement(document.get())->children)));
  EXPECT_EQ(static_cast<ZoxBericht *>(messages->data)->code, 0U);
}

using ZoxMailParseDeathTest = ZoxMailParse;

TEST_F(ZoxMailParseDeathTest, AssertsTheTextsOfAMessage) {
  const auto without = [](const std::string &elements) {
    zox_mail_parse(string_of("<Mail><Event Code=\"1\">" + elements + "</Event></Mail>").get());
  };
  EXPECT_DEATH(without("<Subject>s</Subject><Body>b</Body>"), "assertion failed: \\(from\\)");
  EXPECT_DEATH(without("<From>f</From><Body>b</Body>"), "assertion failed: \\(subject\\)");
  EXPECT_DEATH(without("<From>f</From><Subject>s</Subject>"), "assertion failed: \\(body\\)");
  EXPECT_DEATH(zox_mail_parse(nullptr), "assertion failed: \\(buffer\\)");
}

}  // namespace
}  // namespace velkor::test
