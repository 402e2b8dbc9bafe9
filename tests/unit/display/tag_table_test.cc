/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The HTML table of a posting's tags. */
#include <string>

#include <gtest/gtest.h>

#include <velkor/zox_events_sort.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "display_fixture.h"

namespace {

using namespace velkor;
using namespace velkor::test;

std::string row(const std::string &name, const std::string &content) {
  return "<TR><TD><B>" + name + " :</B></TD><TD>" + content + "</TD></TR>";
}

std::string row(const std::string &content) {
  return "<TR><TD></TD><TD>" + content + "</TD></TR>";
}

std::string table(const std::string &rows) {
  return "<TABLE STYLE='font-family: arial; font-size: 11px;'>" + rows + "</TABLE>";
}

class TagTableTest : public DisplayTest {
protected:
  std::string table_of_tags(gint32 category, const char *tags) {
    event->cat = category;
    zox_splitted_list_free(&event->tags);
    event->tags = zox_splitted_list_split(tags);
    event->status = 0;
    return take(zox_events_sort_parse_tags(event.get()));
  }

  OwnedEvent event = bare_event();
};

TEST_F(TagTableTest, AlwaysShowsCategoryAndState) {
  event->cat = 3;
  event->status = 2;
  EXPECT_EQ(take(zox_events_sort_parse_tags(event.get())),
            table(row("Categorie", "Applicaties") + row("Status", "Bezig met uploaden")));
}

TEST_F(TagTableTest, UnknownNumbersHaveNoWord) {
  event->cat = 4;
  event->status = -4;
  EXPECT_EQ(take(zox_events_sort_parse_tags(event.get())),
            table(row("Categorie", "") + row("Status", "")));
}

TEST_F(TagTableTest, ATagOfTheSameGroupContinuesIt) {
  EXPECT_EQ(table_of_tags(0, "|a1|a2|z9|"),
            table(row("Categorie", "Beeld") + row("Formaat", "WMV") + row("MPG") +
                  row("Onbekende tag", "z9") + row("Status", "Ready")));
}

TEST_F(TagTableTest, AnUnknownTagDoesNotEndAGroup) {
  EXPECT_EQ(table_of_tags(0, "|a1|z9|a2|"),
            table(row("Categorie", "Beeld") + row("Formaat", "WMV") + row("Onbekende tag", "z9") +
                  row("MPG") + row("Status", "Ready")));
}

TEST_F(TagTableTest, AGroupThatReturnsIsNamedAgain) {
  EXPECT_EQ(table_of_tags(1, "|d0|c2|d1|"),
            table(row("Categorie", "Geluid") + row("Genre", "Blues/Folk") +
                  row("Bitrate", "92kbit") + row("Genre", "Compilaties/Box sets") +
                  row("Status", "Ready")));
}

TEST_F(TagTableTest, ACodeCountsInItsCategory) {
  EXPECT_EQ(table_of_tags(2, "|a0|A0|"),
            table(row("Categorie", "Spelletjes") + row("Platform", "Windows") +
                  row("Onbekende tag", "A0") + row("Status", "Ready")));
  EXPECT_EQ(table_of_tags(-1, "|a0|"),
            table(row("Categorie", "") + row("Onbekende tag", "a0") + row("Status", "Ready")));
}

TEST_F(TagTableTest, ShowsLinkTagAndReasonUnescaped) {
  event->link = zox_string_new("www.example.org/?a=1&b='2'");
  event->tag = zox_string_new("<B>vrij</B>");
  event->reason = zox_string_new("\"dubbel\"");
  const std::string address = "http://www.example.org/?a=1&b='2'";
  EXPECT_EQ(take(zox_events_sort_parse_tags(event.get())),
            table(row("Categorie", "") + row("Status", "Onbekend") +
                  row("Weblink", "<A HREF='iets.html#link" + address + "'>" + address + "</A>") +
                  row("Tag", "<B>vrij</B>") + row("Reden van verwijdering", "\"dubbel\"")));
}

TEST_F(TagTableTest, EmptyTextsHaveNoRow) {
  event->link = zox_string_new("");
  event->tag = zox_string_new("");
  event->reason = zox_string_new("");
  EXPECT_EQ(take(zox_events_sort_parse_tags(event.get())),
            table(row("Categorie", "") + row("Status", "Onbekend")));
}

TEST_F(TagTableTest, IsNotCut) {
  event->reason = zox_string_new(std::string(200000, 'x').c_str());
  EXPECT_TRUE(take(zox_events_sort_parse_tags(event.get())).ends_with("xxx</TD></TR></TABLE>"));
}

using TagTableDeathTest = TagTableTest;

TEST_F(TagTableDeathTest, NeedsAPosting) {
  EXPECT_DEATH(zox_events_sort_parse_tags(nullptr),
               "zox_events_sort_parse_tags: assertion failed: \\(event\\)");
}

TEST_F(TagTableDeathTest, NoTagIsNull) {
  GSList nothing{nullptr, nullptr};
  EXPECT_DEATH(
      {
        event->tags = &nothing;
        zox_events_sort_parse_tags(event.get());
      },
      "zox_events_sort_parse_tags: assertion failed: \\(tmp\\)");
}

}  // namespace
