/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_events_parse.h>

#include "support/xml.h"
#include "tests/support/log_capture.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

/** Reads the children of one element. */
OwnedEvent read(std::string_view children) {
  const xml::Document document = xml::parse(test::event_element(children));
  return OwnedEvent(
      zox_events_parse_event(document.get(), xmlDocGetRootElement(document.get())->children));
}

/** The list of tracks in its printed form. */
std::string tracks_of(std::string_view children) {
  const OwnedEvent event = read("<MP3>" + std::string(children) + "</MP3>");
  const std::string text = test::describe(*event);
  const std::size_t begin = text.find("mp3Tracks=") + 10;
  return text.substr(begin, text.find('\n', begin) - begin);
}

TEST(ZoxEventsParseEvent, NothingGivesAFreshRecord) {
  const OwnedEvent event(zox_events_parse_event(nullptr, nullptr));
  EXPECT_EQ(test::describe(*event), test::describe(*OwnedEvent(zox_event_new())));
}

TEST(ZoxEventsParseEvent, TimesAreWidenedWithTheirSign) {
  const OwnedEvent event = read("<Stamp>4294967295</Stamp><Updated>2147483647</Updated>");
  EXPECT_EQ(event->stamp, -1);
  EXPECT_EQ(event->updated, 2147483647);
}

TEST(ZoxEventsParseEvent, SubCategoryComesFromTheFirstTagThatBeginsWithA) {
  EXPECT_EQ(read("<Tags>|c2|a7|</Tags>")->sCat, 7);
  EXPECT_EQ(read("<Tags>|b3|a12|a4|</Tags>")->sCat, 12);
  EXPECT_EQ(read("<Tags>|a|a4|</Tags>")->sCat, 0);
  EXPECT_EQ(read("<Tags>|a5|</Tags><SCat>-1</SCat>")->sCat, 5);
}

TEST(ZoxEventsParseEvent, SubCategoryIsNotDerivedWhenItIsKnown) {
  EXPECT_EQ(read("<Tags>|c2|a7|</Tags><SCat>3</SCat>")->sCat, 3);
  EXPECT_EQ(read("<SCat>0</SCat><Tags>|c2|a7|</Tags>")->sCat, 0);
}

TEST(ZoxEventsParseEvent, SubCategoryStaysUnknownWithoutSuchATag) {
  EXPECT_EQ(read("<Tags>|b1|</Tags>")->sCat, -1);
  EXPECT_EQ(read("<Tags>|A1|</Tags>")->sCat, -1);
  EXPECT_EQ(read("<Cat>1</Cat>")->sCat, -1);
}

TEST(ZoxEventsParseEvent, TracksKeepTheirOrder) {
  EXPECT_EQ(tracks_of("<Track>een</Track><Other>no</Other><Track>twee</Track>"), "[een][twee]");
  EXPECT_EQ(tracks_of("<track>no</track>"), "none");
  EXPECT_EQ(tracks_of("<Track/><Track><![CDATA[]]></Track>"), "[]");
}

TEST(ZoxEventsParseEvent, SecondListIsToldAndReplacesTheFirst) {
  const test::LogCapture log;
  const OwnedEvent event = read("<Groups>|1|</Groups><Groups>|2|</Groups>"
                                "<Tags>|</Tags><Tags>|a1|</Tags><Tags>|a2|</Tags>");
  EXPECT_EQ(log.warnings(), (std::vector<std::string>{"WARNING! event->groups was already filled!",
                                                      "WARNING! event->tags was already filled!"}));
  EXPECT_EQ(event->sCat, 2);
  ASSERT_NE(event->groups, nullptr);
  EXPECT_STREQ(static_cast<GString *>(event->groups->data)->str, "2");
}

TEST(ZoxEventsParseEvent, ListWithoutTextIsPassedOverWhenTolerant) {
  const test::LogCapture log;
  zox_set_tolerant(1);
  EXPECT_EQ(read("<PostID>4</PostID><Groups/>"), nullptr);
  EXPECT_EQ(read("<PostID>5</PostID><Tags/>"), nullptr);
  zox_set_tolerant(0);
  EXPECT_EQ(log.warnings(),
            (std::vector<std::string>{
                "zox_events_parse_event(): posting 4: no text in Groups, passed over\n",
                "zox_events_parse_event(): posting 5: no text in Tags, passed over\n"}));
}

TEST(ZoxEventsParseEventDeathTest, ListsAlwaysHaveAText) {
  EXPECT_DEATH(read("<Groups/>"), "zox_events_parse_event: assertion failed: \\(tmp\\)");
  EXPECT_DEATH(read("<Tags><b>x</b></Tags>"),
               "zox_events_parse_event: assertion failed: \\(tmp\\)");
}

}  // namespace
}  // namespace velkor
