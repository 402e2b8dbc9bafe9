/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_eventinfo.h>

#include "tests/support/filter_fixture.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;

std::vector<std::string> tracks_of(const OwnedEvent &event) {
  std::vector<std::string> tracks;
  for (const GSList *cell = event->mp3Tracks; cell != nullptr; cell = cell->next)
    tracks.push_back(text_of(static_cast<const GString *>(cell->data)));
  return tracks;
}

class ZoxEventinfoParse : public ServiceTest {
protected:
  OwnedEvent parse(const std::string &reply) {
    const OwnedString text = string_of(reply);
    OwnedEvent event;
    said = standard_error_of([&] { event.reset(zox_eventinfo_parse(text.get())); });
    return event;
  }

  LogCapture log;
  std::string said;
};

TEST_F(ZoxEventinfoParse, ReadsThePostAndItsTracks) {
  const OwnedEvent event =
      parse("<PostInfo><Post><Ann>a</Ann><Des>d</Des><Sig>s</Sig><FType>2</FType>"
            "<Files>30</Files><FStart>4</FStart><Img>i</Img></Post>"
            "<MP3><Track>een</Track><Other>x</Other><Track>twee</Track></MP3></PostInfo>");
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(text_of(event->ann), "a");
  EXPECT_EQ(text_of(event->des), "d");
  EXPECT_EQ(text_of(event->sig), "s");
  EXPECT_EQ(text_of(event->img), "i");
  EXPECT_EQ(event->fType, 2);
  EXPECT_EQ(event->files, 30);
  EXPECT_EQ(event->fStart, 4);
  EXPECT_THAT(tracks_of(event), ElementsAre("een", "twee"));
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxEventinfoParse, ComparesNamesOfRootAndPostWithoutLetterCase) {
  const OwnedEvent event = parse("<postINFO><POST><Ann>a</Ann></POST></postINFO>");
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(text_of(event->ann), "a");
}

TEST_F(ZoxEventinfoParse, KnowsTracksByTheirExactNameOnly) {
  const OwnedEvent event = parse("<PostInfo><Post/><mp3><Track>t</Track></mp3></PostInfo>");
  ASSERT_NE(event, nullptr);
  EXPECT_THAT(tracks_of(event), IsEmpty());
}

TEST_F(ZoxEventinfoParse, PassesOverTracksBeforeThePost) {
  const OwnedEvent event =
      parse("<PostInfo><MP3><Track>t</Track></MP3><Post><Ann>a</Ann></Post></PostInfo>");
  ASSERT_NE(event, nullptr);
  EXPECT_THAT(tracks_of(event), IsEmpty());
  EXPECT_THAT(log.warnings(), ElementsAre("zox_eventinfo_parse(): event == NULL\n"));
}

TEST_F(ZoxEventinfoParse, TakesTheLastPostAndTheLastTracks) {
  const OwnedEvent event = parse("<PostInfo><Post><Ann>a</Ann></Post><Other/>"
                                 "<Post><Des>d</Des><MP3><Track>x</Track></MP3></Post>"
                                 "<MP3><Track>y</Track></MP3><MP3><Track>z</Track></MP3>"
                                 "</PostInfo>");
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(event->ann, nullptr);
  EXPECT_EQ(text_of(event->des), "d");
  EXPECT_THAT(tracks_of(event), ElementsAre("z"));
}

TEST_F(ZoxEventinfoParse, YieldsNothingWithoutAPost) {
  EXPECT_EQ(parse("<PostInfo><Other/></PostInfo>"), nullptr);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxEventinfoParse, TellsOfAnUnusableDocument) {
  EXPECT_EQ(parse(""), nullptr);
  EXPECT_EQ(said, "zox_eventinfo_parse(): empty document!\n");
  EXPECT_EQ(parse("<PostInfo><Post>"), nullptr);
  EXPECT_EQ(said, "zox_eventinfo_parse(): empty document!\n");
  EXPECT_EQ(parse("<Post/>"), nullptr);
  EXPECT_EQ(said, "zox_eventinfo_parse(): document of the wrong type, root node != PostInfo");
  EXPECT_EQ(parse("<PostInfo/>"), nullptr);
  EXPECT_EQ(said, "");
  EXPECT_THAT(log.warnings(), ElementsAre("zox_eventinfo_parse(): no children of root-node!\n"));
}

TEST_F(ZoxEventinfoParse, YieldsNothingForAnUnusablePostInTolerantMode) {
  const Tolerance tolerance;
  EXPECT_EQ(parse("<PostInfo><Post><Ann>a</Ann></Post><Post><Tags/></Post></PostInfo>"), nullptr);
}

class ZoxEventinfoParseFindpost : public FilterTest {
protected:
  OwnedEvent parse(const std::string &reply) {
    const OwnedString text = string_of(reply);
    OwnedEvent event;
    said = standard_error_of([&] { event.reset(zox_eventinfo_parse_findpost(text.get())); });
    return event;
  }

  LogCapture log;
  QuietXml quiet;
  std::string said;
};

TEST_F(ZoxEventinfoParseFindpost, ReadsThePostAndCountsIt) {
  keep({0, 1});
  const OwnedEvent event = parse("<pOST><PostID>12</PostID><Title>T</Title><Cat>1</Cat></pOST>");
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(event->postId, 12);
  EXPECT_EQ(text_of(event->title), "T");
  EXPECT_EQ(zox_category_get_parent(1)->count, 1);
  EXPECT_EQ(zox_category_get_parent(0)->count, 0);
}

TEST_F(ZoxEventinfoParseFindpost, YieldsAFreshRecordForAnEmptyPost) {
  keep({0});
  const OwnedEvent event = parse("<Post/>");
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(event->postId, -1);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxEventinfoParseFindpost, LogsAnUnusableDocument) {
  EXPECT_EQ(parse(""), nullptr);
  EXPECT_EQ(parse("<PostInfo/>"), nullptr);
  EXPECT_THAT(
      log.warnings(),
      ElementsAre("zox_eventinfo_parse_findpost(): empty document!\n",
                  "zox_eventinfo_parse_findpost(): document of the wrong type, root node != Post"));
  EXPECT_EQ(said, "");
}

TEST_F(ZoxEventinfoParseFindpost, YieldsNothingForAnUnusablePostInTolerantMode) {
  const Tolerance tolerance;
  EXPECT_EQ(parse("<Post><Groups/></Post>"), nullptr);
}

using ZoxEventinfoParseDeathTest = LibraryTest;

TEST_F(ZoxEventinfoParseDeathTest, AssertsItsArgumentsAndTheCore) {
  EXPECT_DEATH(zox_eventinfo_parse(nullptr), "assertion failed: \\(tekst\\)");
  EXPECT_DEATH(zox_eventinfo_parse_findpost(nullptr), "assertion failed: \\(buffer\\)");
  const OwnedString text = string_of("<Post/>");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_eventinfo_parse_findpost(text.get());
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor::test
