/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_xml.h>

#include <gmock/gmock.h>

#include <velkor/zox_string.h>

#include "support/xml.h"
#include "tests/support/log_capture.h"
#include "tests/unit/posting/event_samples.h"
#include "tests/unit/store/reading.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ZoxEventsXml : public testing::Test {
protected:
  /** The element of a posting as text, on one line. */
  std::string written(const ZoxEvent &event,
                      xmlNodePtr (*writer)(const ZoxEvent *,
                                           xmlDocPtr) = zox_events_xml_add_basic) {
    const xml::Node element(writer(&event, document.get()));
    if (!element)
      return "nothing";
    EXPECT_EQ(element->parent, nullptr);
    const std::unique_ptr<xmlBuffer, ReleaseWith<xmlBufferFree>> buffer(xmlBufferCreate());
    xmlNodeDump(buffer.get(), document.get(), element.get(), 0, 0);
    return xml::chars(xmlBufferContent(buffer.get()));
  }

  /** The same posting after it was written and read. */
  std::string read_back(const ZoxEvent &event) {
    const auto postings = test::read_by_tree("<Events>" + written(event) + "</Events>");
    return postings && postings->size() == 1 ? postings->front() : "nothing";
  }

  xml::Document document{xmlNewDoc(xml::chars("1.0"))};
};

TEST_F(ZoxEventsXml, WritesTheBasicFieldsInOrder) {
  EXPECT_EQ(written(*test::full_event()),
            "<Event Code=\"1\"><PostID>7</PostID><Stamp>1300000000</Stamp>"
            "<Updated>1300000100</Updated><Status>1</Status><Groups><![CDATA[|12|40|]]></Groups>"
            "<FName><![CDATA[een.bestand]]></FName><Title><![CDATA[Een titel]]></Title>"
            "<Poster><![CDATA[plaatser]]></Poster><Link><![CDATA[http://link.example/]]></Link>"
            "<Rating>80</Rating><Cat>0</Cat><SCat>3</SCat><Tags><![CDATA[|a3|b1|]]></Tags>"
            "<Tag><![CDATA[vrije tekst]]></Tag></Event>");
}

TEST_F(ZoxEventsXml, LeavesOutWhatIsAbsent) {
  const OwnedEvent event(zox_event_new());
  event->poster = zox_string_new("");
  EXPECT_EQ(written(*event), "<Event Code=\"1\"><PostID>-1</PostID><Stamp>0</Stamp>"
                             "<Updated>0</Updated><Status>-5</Status><Poster><![CDATA[]]></Poster>"
                             "<Rating>0</Rating><Cat>-1</Cat><SCat>-1</SCat></Event>");
}

TEST_F(ZoxEventsXml, NumbersAreCutTo32BitsAndTenCharacters) {
  const OwnedEvent event = test::basic_event(1);
  event->stamp = gint64{1} << 33 | 5;
  event->updated = 4294967295;
  event->rating = G_MININT32;
  const std::string text = written(*event);
  EXPECT_THAT(text, HasSubstr("<Stamp>5</Stamp><Updated>-1</Updated>"));
  EXPECT_THAT(text, HasSubstr("<Rating>-214748364</Rating>"));
}

TEST_F(ZoxEventsXml, ComesBackWithItsBasicFieldsAlone) {
  const OwnedEvent event = test::full_event();
  const OwnedEvent expected = test::basic_event(7);
  expected->fName = zox_string_new("een.bestand");
  expected->link = zox_string_new("http://link.example/");
  expected->tag = zox_string_new("vrije tekst");
  EXPECT_EQ(read_back(*event), test::describe(*expected));
}

TEST_F(ZoxEventsXml, AnyTextComesBack) {
  for (const char *text : {"", " ", "a & b < c > d \"e\"", "]]>", "]]]]>>", "x]]", "<![CDATA[",
                           "één €", "\U0001F4A1", "tab\tregel\n"}) {
    const OwnedEvent event = test::basic_event(1, text);
    EXPECT_EQ(read_back(*event), test::describe(*event)) << text;
  }
}

TEST_F(ZoxEventsXml, UnknownSubCategoryIsDerivedAgain) {
  const OwnedEvent event = test::basic_event(1);
  event->sCat = -1;
  EXPECT_THAT(written(*event), HasSubstr("<SCat>-1</SCat>"));
  EXPECT_THAT(read_back(*event), HasSubstr("sCat=3\n"));
}

TEST_F(ZoxEventsXml, PostingWithoutPosterIsWrittenWithAnEmptyOne) {
  const OwnedEvent event = test::basic_event(9);
  replace_string(event->poster, nullptr);
  EXPECT_THAT(written(*event), HasSubstr("<Poster><![CDATA[]]></Poster>"));
}

TEST_F(ZoxEventsXml, TextThatNoReaderTakesIsNotWritten) {
  const test::LogCapture log;
  for (const char *text : {"caf\xe9", "a\x01", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xED\xA0\x80"})
    EXPECT_EQ(written(*test::basic_event(1, text)), "nothing");
  EXPECT_EQ(written(*test::basic_event(1, std::string_view("a\0b", 3))), "nothing");
  EXPECT_EQ(written(*test::basic_event(1, std::string(10'000'001, 'x'))), "nothing");
  const OwnedEvent event = test::basic_event(1);
  g_string_assign(static_cast<GString *>(event->tags->data), "a\x02");
  EXPECT_EQ(written(*event), "nothing");
  EXPECT_THAT(log.warnings().back(), HasSubstr("posting 1 kan niet geschreven worden: Tags\n"));
}

TEST_F(ZoxEventsXml, AllIsBasic) {
  const OwnedEvent event = test::full_event();
  EXPECT_EQ(written(*event, zox_events_xml_add_all), written(*event));
}

using ZoxEventsXmlDeathTest = ZoxEventsXml;

TEST_F(ZoxEventsXmlDeathTest, NeedsPostingAndDocument) {
  const OwnedEvent event = test::full_event();
  EXPECT_DEATH(zox_events_xml_add_basic(nullptr, document.get()), "assertion failed: \\(event\\)");
  EXPECT_DEATH(zox_events_xml_add_all(nullptr, document.get()), "assertion failed: \\(event\\)");
  EXPECT_DEATH(zox_events_xml_add_all(event.get(), nullptr), "assertion failed: \\(doc\\)");
}

}  // namespace
}  // namespace velkor
