/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <utility>

#include <gmock/gmock.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "tests/support/layer_fixtures.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ZoxEventsListParse : public test::LibraryTest {
protected:
  ~ZoxEventsListParse() override { g_slist_free_full(chunks, g_free); }

  ZoxErrorCode read(std::string_view document) {
    char *message = nullptr;
    const ZoxErrorCode code =
        zox_events_list_parse(test::zox(document).get(), &stamp, &chunks, &message);
    const OwnedText owned(message);
    error = message == nullptr ? "none" : message;
    return code;
  }

  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const char *name : Items<const char>(chunks))
      names.emplace_back(name);
    return names;
  }

  static std::vector<std::string> groups() {
    std::vector<std::string> groups;
    for (const ZoxGroup *group : Items<const ZoxGroup>(core->groups))
      groups.push_back(std::to_string(group->id) + " " + group->groupName->str);
    return groups;
  }

  gint64 stamp = 77;
  GSList *chunks = nullptr;
  std::string error;
};

TEST_F(ZoxEventsListParse, ReadsAWholeReply) {
  EXPECT_EQ(read("<Events><Event Code='0'><Stamp>1300000000</Stamp></Event>"
                 "<Event Code='4'><GroupID>12</GroupID><Name>alt.binaries.tv</Name></Event>"
                 "<Event Code='5'><T>54321</T><N>123</N></Event>"
                 "<Event Code='7'><Chunks>een|twee</Chunks></Event></Events>"),
            0U);
  EXPECT_EQ(error, "none");
  EXPECT_EQ(stamp, 1300000000);
  EXPECT_THAT(groups(), ElementsAre("12 alt.binaries.tv"));
  EXPECT_EQ(core->config->ledenCount, 54321U);
  EXPECT_STREQ(core->config->usersOnline->str, "123");
  EXPECT_THAT(names(), ElementsAre("een", "twee"));
}

TEST_F(ZoxEventsListParse, LastStampWinsWithItsSign) {
  EXPECT_EQ(read("<Events><Event Code='0'><Stamp>1</Stamp></Event>"
                 "<Event Code='0'><Stamp>2</Stamp><Stamp>4294967295</Stamp></Event></Events>"),
            0U);
  EXPECT_EQ(stamp, -1);
}

TEST_F(ZoxEventsListParse, StampStaysWithoutOne) {
  EXPECT_EQ(read("<Events><Event Code='0'/></Events>"), 0U);
  EXPECT_EQ(stamp, 77);
}

TEST_F(ZoxEventsListParse, StampIsOptional) {
  char *message = nullptr;
  EXPECT_EQ(zox_events_list_parse(
                test::zox("<Events><Event Code='0'><Stamp>1</Stamp></Event></Events>").get(),
                nullptr, &chunks, &message),
            0U);
}

TEST_F(ZoxEventsListParse, ChunksKeepEmptyNames) {
  EXPECT_EQ(read("<Events><Event Code='7'><Chunks>a||b</Chunks></Event></Events>"), 0U);
  EXPECT_THAT(names(), ElementsAre("a", "", "b"));
  EXPECT_EQ(read("<Events><Event Code='7'><Chunks>|c</Chunks><Chunks/><Chunks>d</Chunks></Event>"
                 "<Event Code='7'><Chunks><![CDATA[e|]]></Chunks></Event></Events>"),
            0U);
  EXPECT_THAT(names(), ElementsAre("a", "", "b", "", "c", "d", "e", ""));
}

TEST_F(ZoxEventsListParse, KnownGroupChangesNothing) {
  ZoxGroup *group = zox_group_new();
  group->id = 12;
  group->groupName = zox_string_new("oud");
  core->groups = g_slist_append(nullptr, group);
  EXPECT_EQ(read("<Events><Event Code='4'><GroupID>12</GroupID><Name>nieuw</Name></Event>"
                 "<Event Code='4'><GroupID>13</GroupID><Name>ander</Name></Event>"
                 "<Event Code='4'><GroupID>13</GroupID><Name>nogmaals</Name></Event></Events>"),
            0U);
  EXPECT_THAT(groups(), ElementsAre("12 oud", "13 ander"));
}

TEST_F(ZoxEventsListParse, LastIdAndNameOfAGroupWin) {
  EXPECT_EQ(read("<Events><Event Code='4'><Name>a</Name><GroupID>1</GroupID><GroupID>2</GroupID>"
                 "<Name>b</Name></Event></Events>"),
            0U);
  EXPECT_THAT(groups(), ElementsAre("2 b"));
}

TEST_F(ZoxEventsListParse, IncompleteGroupEndsTheReply) {
  for (const char *children :
       {"", "<GroupID>3</GroupID>", "<Name>x</Name>", "<GroupID>0</GroupID><Name>x</Name>",
        "<GroupID>3</GroupID><Name>x</Name><Name/>"}) {
    zox_group_free_all();
    const std::string text =
        "<Events><Event Code='4'><GroupID>1</GroupID><Name>eerst</Name></Event>"
        "<Event Code='4'>" +
        std::string(children) + "</Event><Event Code='7'><Chunks>c</Chunks></Event></Events>";
    EXPECT_EQ(read(text), 11U);
    EXPECT_EQ(error, "zox_events_parse(): groupID == 0 || name == NULL\n");
    EXPECT_THAT(groups(), ElementsAre("1 eerst"));
    EXPECT_TRUE(names().empty());
  }
}

TEST_F(ZoxEventsListParse, UnknownCodeEndsTheReply) {
  EXPECT_EQ(read("<Events><Event Code='7'><Chunks>a</Chunks></Event><Event Code='1'/>"
                 "<Event Code='7'><Chunks>b</Chunks></Event></Events>"),
            11U);
  EXPECT_EQ(error, "zox_events_parse: Unknown numcode 1");
  EXPECT_THAT(names(), ElementsAre("a"));
  EXPECT_EQ(read("<Events><Event Code='-2'/></Events>"), 11U);
  EXPECT_EQ(error, "zox_events_parse: Unknown numcode -2");
}

TEST_F(ZoxEventsListParse, OthersAreSkipped) {
  EXPECT_EQ(read("<Events><Event/><event Code='1'/><Other Code='1'/>x<Event code='1'/></Events>"),
            0U);
}

TEST_F(ZoxEventsListParse, RootIsNamedExactly) {
  for (const char *text : {"<events><Event Code='0'/></events>", "<Groups/>"}) {
    EXPECT_EQ(read(text), 11U);
    EXPECT_EQ(error, "zox_events_list_parse(): document of the wrong type, root node != Events");
  }
}

TEST_F(ZoxEventsListParse, RootNeedsChildren) {
  EXPECT_EQ(read("<Events/>"), 11U);
  EXPECT_EQ(error, "zox_events_list_parse(): no children of root-node!");
}

TEST_F(ZoxEventsListParse, UnusableReplyGivesTheParsersDiagnosis) {
  EXPECT_EQ(read("<Events>"), 11U);
  EXPECT_THAT(error, HasSubstr("Premature end of data"));
  EXPECT_EQ(read(""), 11U);
  EXPECT_EQ(error, "none");
}

TEST_F(ZoxEventsListParse, ManyGroupsAndChunksStayCheap) {
  std::string text = "<Events>";
  for (int id = 1; id <= 20000; ++id) {
    const std::string number = std::to_string(id);
    text += "<Event Code='4'><GroupID>" + number + "</GroupID><Name>g" + number + "</Name></Event>";
    text += "<Event Code='7'><Chunks>c" + number + "</Chunks></Event>";
  }
  EXPECT_EQ(read(text + "</Events>"), 0U);
  EXPECT_EQ(g_slist_length(core->groups), 20000U);
  EXPECT_EQ(names().back(), "c20000");
}

std::string chunks_of(const std::string &names) {
  return "<Events><Event Code='7'><Chunks>" + names + "</Chunks></Event></Events>";
}

TEST_F(ZoxEventsListParse, TakesTensOfThousandsOfNames) {
  EXPECT_EQ(read(chunks_of(std::string(49'999, '|'))), 0U);
  EXPECT_EQ(names().size(), 50'000U);
}

TEST_F(ZoxEventsListParse, RefusesMoreNamesThanAnyServiceHas) {
  for (const std::string &names :
       {std::string(50'000, '|'), std::string(9'000'000, '|'),
        std::string(30'000, '|') + "</Chunks><Chunks>" + std::string(30'000, '|'),
        "a</Chunks></Event><Event Code='7'><Chunks>" + std::string(49'999, '|')}) {
    g_slist_free_full(std::exchange(chunks, nullptr), g_free);
    EXPECT_EQ(read(chunks_of(names)), 11U);
    EXPECT_EQ(error, "zox_events_list_parse(): more than 50000 names of dumps");
    EXPECT_LT(g_slist_length(chunks), 50'000U);
  }
}

TEST_F(ZoxEventsListParse, RefusesMoreElementsThanAnyServiceSends) {
  std::string text = "<Events>";
  for (int count = 0; count < 1'000'000; ++count)
    text += "<Event/>";
  EXPECT_EQ(read(text + "</Events>"), 11U);
  EXPECT_EQ(error, "Document of too many nodes\n");
}

TEST_F(ZoxEventsListParse, RefusesMoreNamesOfElementsThanAnyServiceHas) {
  std::string text = "<Events>";
  for (int number = 0; number < 20'000; ++number)
    text += "<n" + std::to_string(number) + "/>";
  EXPECT_EQ(read(text + "</Events>"), 11U);
  EXPECT_THAT(error, testing::StartsWith("Document of too many names\n"));
}

using ZoxEventsListParseDeathTest = ZoxEventsListParse;

TEST_F(ZoxEventsListParseDeathTest, NeedsCoreAndBuffer) {
  char *message = nullptr;
  EXPECT_DEATH(zox_events_list_parse(nullptr, &stamp, &chunks, &message),
               "assertion failed: \\(buffer\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_events_list_parse(nullptr, &stamp, &chunks, &message);
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
