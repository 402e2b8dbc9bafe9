/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The element of one posting. */
#include <limits>
#include <ostream>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/zox_events_sort.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>
#include <velkor/zox_watchlist.h>

#include "display_fixture.h"
#include "tests/support/log_capture.h"

namespace {

using namespace velkor;
using namespace velkor::test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ElementTest : public DisplayTest {};

TEST_F(ElementTest, PrintsEverythingThatIsKnown) {
  zox_watchlist_add(4711);
  EXPECT_EQ(print(*full_event(), false, 7), golden("element_full.xml"));
}

TEST_F(ElementTest, IndentsEveryLineButTheForum) {
  zox_watchlist_add(4711);
  EXPECT_EQ(print(*full_event(), true, 7), golden("element_indented.xml"));
}

TEST_F(ElementTest, ConvertsTheLongTextsAndTheReactions) {
  zox_watchlist_add(4711);
  EXPECT_EQ(print(*full_event(), false, 7, in_braces), golden("element_converted.xml"));
}

TEST_F(ElementTest, LeavesOutWhatIsMissing) {
  EXPECT_EQ(print(*bare_event()), golden("element_bare.xml"));
}

TEST_F(ElementTest, AnyIndentIsOneTab) {
  const OwnedEvent event = bare_event();
  EXPECT_EQ(take(zox_events_sort_print(event.get(), -3, 0, nullptr)), print(*event, true));
}

/** An empty text is there; only a text that is not there has no line. */
TEST_F(ElementTest, EmptyTextsHaveTheirLines) {
  const OwnedEvent event = bare_event();
  event->fName = zox_string_new("");
  event->title = zox_string_new("");
  event->ann = zox_string_new("");
  event->des = zox_string_new("");
  event->sig = zox_string_new("");
  event->img = zox_string_new("");
  event->reason = zox_string_new("");
  const std::string xml = print(*event);
  for (const char *element : {"FName", "Title", "Ann", "Des", "Sig", "Img", "Reason"})
    EXPECT_EQ(content_of(xml, element), "") << element;
  EXPECT_THAT(xml, HasSubstr("\n\t\t\t<Reason><![CDATA[]]></Reason>\n"));
}

TEST_F(ElementTest, PrintsTheStoredFormOfTheGroups) {
  const auto printed_groups = [](std::initializer_list<std::string_view> ids) {
    const OwnedEvent event = bare_event();
    for (const std::string_view id : ids)
      event->groups = g_slist_append(event->groups,
                                     g_string_new_len(id.data(), static_cast<gssize>(id.size())));
    const LogCapture unknown_groups;
    return content_of(print(*event), "Groups");
  };
  EXPECT_EQ(printed_groups({}), "|");
  EXPECT_EQ(printed_groups({"4", "17"}), "|4|17|");
  EXPECT_EQ(printed_groups({""}), "|");
  EXPECT_EQ(printed_groups({"", ""}), "|||");
  EXPECT_EQ(printed_groups({std::string_view("4\0x", 3), "17"}), "|4");
}

TEST_F(ElementTest, PrintsExtremeNumbers) {
  const OwnedEvent event = bare_event(std::numeric_limits<gint32>::min());
  event->stamp = -1;
  event->updated = std::numeric_limits<gint64>::max();
  event->view = std::numeric_limits<gint32>::max();
  const std::string xml = print(*event, false, std::numeric_limits<gint32>::max());
  EXPECT_EQ(content_of(xml, "PostID"), "-2147483648");
  EXPECT_EQ(content_of(xml, "Datum"), "01-01 (00:59)");
  EXPECT_EQ(content_of(xml, "Stamp"), "-1");
  EXPECT_EQ(content_of(xml, "Updated"), "-1");
  EXPECT_EQ(content_of(xml, "NumViews"), "2147483647");
  EXPECT_EQ(content_of(xml, "Pos"), "2147483647");
}

TEST_F(ElementTest, ADateThatCannotBeFormattedHasNoLine) {
  const LogCapture log;
  const OwnedEvent event = bare_event();
  event->stamp = std::numeric_limits<gint64>::max();
  const std::string xml = print(*event);
  EXPECT_EQ(content_of(xml, "Datum"), "(absent)");
  EXPECT_EQ(content_of(xml, "Stamp"), "9223372036854775807");
  EXPECT_THAT(log.warnings(), ElementsAre(HasSubstr("zox_string_date(): ")));
}

TEST_F(ElementTest, APostingWithoutNewsgroups) {
  const std::string xml = print(*bare_event());
  EXPECT_EQ(content_of(xml, "Groups"), "|");
  EXPECT_EQ(content_of(xml, "NumNewsgroups"), "0");
  EXPECT_EQ(content_of(xml, "Newsgroups"), "(absent)");
}

TEST_F(ElementTest, AnUnknownNewsgroupIsWarnedAbout) {
  const LogCapture log;
  const OwnedEvent event = bare_event(12);
  event->groups = zox_splitted_list_split("|99|17|geen|");
  const std::string xml = print(*event);
  EXPECT_EQ(content_of(xml, "Groups"), "|99|17|geen|");
  EXPECT_EQ(content_of(xml, "NumNewsgroups"), "3");
  EXPECT_EQ(count_of(xml, "<Newsgroups>"), 1U);
  EXPECT_EQ(content_of(xml, "Newsgroups"), "a.b.tv");
  EXPECT_THAT(
      log.warnings(),
      ElementsAre("zox_events_sort_print(): nieuwsgroep behorende bij groupId 99 onbekend "
                  "(eventid = 12)!\n",
                  "zox_events_sort_print(): nieuwsgroep behorende bij groupId geen onbekend "
                  "(eventid = 12)!\n"));
}

TEST_F(ElementTest, ANewsgroupWithoutNameIsPassedOver) {
  const LogCapture log;
  add_group(5, nullptr);
  const OwnedEvent event = bare_event(12);
  event->groups = zox_splitted_list_split("|5|");
  EXPECT_EQ(content_of(print(*event), "Newsgroups"), "(absent)");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ElementTest, TheFirstOfTwoGroupsOfOneNumberCounts) {
  add_group(17, "alt.binaries.later");
  const OwnedEvent event = bare_event();
  event->groups = zox_splitted_list_split("|17|");
  EXPECT_EQ(content_of(print(*event), "Newsgroups"), "a.b.tv");
}

TEST_F(ElementTest, ALinkGetsItsProtocol) {
  const OwnedEvent event = bare_event();
  event->link = zox_string_new("HTTP://x");
  EXPECT_EQ(content_of(print(*event), "Link"), "HTTP://x");
  g_string_assign(event->link, "x");
  EXPECT_EQ(content_of(print(*event), "Link"), "http://x");
  EXPECT_THAT(content_of(print(*event), "TagInfo"), HasSubstr("#linkhttp://x'>http://x</A>"));
  g_string_assign(event->link, "");
  EXPECT_EQ(content_of(print(*event), "Link"), "");
  EXPECT_THAT(content_of(print(*event), "TagInfo"), Not(HasSubstr("Weblink")));
}

TEST_F(ElementTest, TellsWhetherAPostingIsWatched) {
  zox_watchlist_add(12);
  EXPECT_EQ(content_of(print(*bare_event(12)), "Watchlist"), "1");
  EXPECT_EQ(content_of(print(*bare_event(13)), "Watchlist"), "0");
}

TEST_F(ElementTest, TextsEndAtAZeroByte) {
  const OwnedEvent event = bare_event();
  event->title = g_string_new_len("een\0twee", 8);
  EXPECT_EQ(content_of(print(*event), "Title"), "een");
}

struct Rating {
  gint32 rating;
  gint32 scale;
  const char *printed;
};

void PrintTo(const Rating &rating, std::ostream *out) {
  *out << rating.rating << " of scale " << rating.scale;
}

class RatingTest : public DisplayTest, public testing::WithParamInterface<Rating> {};

TEST_P(RatingTest, IsScaledInSinglePrecisionAndCut) {
  core->config->ratingScale = GetParam().scale;
  const OwnedEvent event = bare_event();
  event->rating = GetParam().rating;
  EXPECT_EQ(content_of(print(*event), "Rating"), GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(
    Scales, RatingTest,
    testing::Values(Rating{1500, 100, "1000"}, Rating{1000, 100, "1000"}, Rating{999, 100, "999"},
                    Rating{-7, 100, "-7"}, Rating{42, 10, "420"}, Rating{150, 10, "1000"},
                    // 500 and 499.99... in double precision
                    Rating{15, 3, "499"}, Rating{145, 29, "500"},
                    // cut toward zero
                    Rating{5, 3, "166"}, Rating{-5, 3, "-166"},
                    // a negative scale puts the limit below zero
                    Rating{5, -100, "1000"},
                    // ten times the scale does not fit, which makes the limit 4
                    Rating{2000000000, 429496730, "0"},
                    // out of the range of the number
                    Rating{std::numeric_limits<gint32>::min(), 1, "-2147483648"},
                    Rating{std::numeric_limits<gint32>::min(), -1, "2147483647"},
                    // no scale at all
                    Rating{5, 0, "0"}, Rating{-5, 0, "0"}, Rating{0, 0, "0"}));

constexpr std::size_t line_limit = 65534;

/** The line of a posting whose title is so many letters long, up to the line that follows. */
std::string title_line(const std::string &xml) {
  const std::size_t start = xml.find("\t\t<Title>");
  return xml.substr(start, xml.find("\t\t<Groups>") - start);
}

class LongLineTest : public DisplayTest {
protected:
  static std::string line_of_title(std::size_t length, bool indent) {
    const OwnedEvent event = bare_event();
    event->title = zox_string_new(std::string(length, 'x').c_str());
    const std::string xml = print(*event, indent);
    return title_line(xml);
  }
  const std::size_t around = std::string("\t\t<Title><![CDATA[]]></Title>\n").size();
};

TEST_F(LongLineTest, FitsUpToTheLimit) {
  const std::string line = line_of_title(line_limit - around, false);
  EXPECT_EQ(line.size(), line_limit);
  EXPECT_TRUE(line.ends_with("x]]></Title>\n"));
}

TEST_F(LongLineTest, IsCutBehindTheLimit) {
  const std::string line = line_of_title(line_limit - around + 1, false);
  EXPECT_EQ(line.size(), line_limit);
  EXPECT_TRUE(line.ends_with("x]]></Title>"));
  const std::string longer = line_of_title(200000, false);
  EXPECT_EQ(longer.size(), line_limit);
  EXPECT_TRUE(longer.ends_with("xxx"));
}

TEST_F(LongLineTest, TheIndentIsNoPartOfTheLine) {
  // Behind the cut line the next one's indent follows at once.
  EXPECT_EQ(line_of_title(200000, true).size(), line_limit + 1);
}

TEST_F(LongLineTest, LinesOfEveryKindAreCut) {
  const std::string text(200000, 'x');
  const OwnedEvent event = bare_event();
  event->ann = zox_string_new(text.c_str());
  event->tag = zox_string_new(text.c_str());
  event->link = zox_string_new(text.c_str());
  event->mp3Tracks = g_slist_append(nullptr, zox_string_new(text.c_str()));
  event->groups = g_slist_append(nullptr, zox_string_new(("17" + std::string(70000, 'x')).c_str()));
  const std::string bare = print(*bare_event());
  const std::string xml = print(*event);
  // Ann, Tag, Link, TagInfo (its link), Track and Groups
  EXPECT_EQ(count_of(xml, "]]>"), count_of(bare, "]]>") - 4 + 1);
  EXPECT_LT(xml.size(), 6 * line_limit + bare.size() + 100);
  EXPECT_GT(xml.size(), 6 * line_limit);
}

using ElementDeathTest = ElementTest;

ZoxString *to_nothing(ZoxString *) {
  return nullptr;
}

TEST_F(ElementDeathTest, NeedsAPosting) {
  EXPECT_DEATH(zox_events_sort_print(nullptr, 0, 0, nullptr),
               "zox_events_sort_print: assertion failed: \\(event\\)");
}

TEST_F(ElementDeathTest, NeedsCoreAndSettings) {
  const OwnedEvent event = bare_event();
  EXPECT_DEATH(
      {
        core->config = nullptr;
        zox_events_sort_print(event.get(), 0, 0, nullptr);
      },
      "zox_events_sort_print: assertion failed: \\(core->config\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_events_sort_print(event.get(), 0, 0, nullptr);
      },
      "zox_events_sort_print: assertion failed: \\(core\\)");
}

TEST_F(ElementDeathTest, ItemsAreNeverMissing) {
  const OwnedEvent event = bare_event();
  GSList nothing{nullptr, nullptr};
  EXPECT_DEATH(
      {
        event->groups = &nothing;
        zox_events_sort_print(event.get(), 0, 0, nullptr);
      },
      "zox_events_sort_print: assertion failed: \\(groupId\\)");
  EXPECT_DEATH(
      {
        event->mp3Tracks = &nothing;
        zox_events_sort_print(event.get(), 0, 0, nullptr);
      },
      "zox_events_sort_print: assertion failed: \\(track\\)");
}

TEST_F(ElementDeathTest, NoEntryOfTheWatchlistIsNull) {
  const OwnedEvent event = bare_event();
  EXPECT_DEATH(
      {
        core->config->watchlist = g_slist_prepend(nullptr, nullptr);
        zox_events_sort_print(event.get(), 0, 0, nullptr);
      },
      "zox_watchlist\\.cc:[0-9]+:zox_watchlist_is_in_list: assertion failed: \\(watchlist\\)");
}

TEST_F(ElementDeathTest, AConversionGivesAText) {
  const OwnedEvent event = bare_event();
  event->des = zox_string_new("omschrijving");
  EXPECT_DEATH(zox_events_sort_print(event.get(), 0, 0, to_nothing),
               "zox_events_sort_print: assertion failed: \\(tmp\\)");
}

}  // namespace
