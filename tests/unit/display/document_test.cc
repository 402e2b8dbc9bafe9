/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The display document around the postings. */
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_sort.h>
#include <velkor/zox_file.h>
#include <velkor/zox_string.h>
#include <velkor/zox_watchlist.h>

#include "display/parts.h"
#include "display_fixture.h"
#include "store/filter_pass.h"
#include "tests/support/log_capture.h"

namespace {

using namespace velkor;
using namespace velkor::test;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr gint64 generated = 1234567890;

class DocumentTest : public DisplayTest {
protected:
  static std::string filtered(ZoxTextFunc textFunc = nullptr) {
    return take(events_document(true, textFunc, generated));
  }
  static std::string total(ZoxTextFunc textFunc = nullptr) {
    return take(events_document(false, textFunc, generated));
  }

  static void add(gint32 postId, gint32 category, const char *title = nullptr) {
    const OwnedEvent event = bare_event(postId);
    event->cat = category;
    event->title = zox_string_new(title);
    add_event(*event);
  }

  /** Applies the filter below; postings of the main categories pass. */
  void apply() {
    if (core->categories == nullptr)
      show_every_category();
    filter_entries(core->eventlist, *filter);
  }

  OwnedFilter filter{zox_filter_new_filter()};
};

TEST_F(DocumentTest, ChosenPostingsStandInTheOrderOfTheChoice) {
  for (const gint32 id : {10, 20, 30})
    add(id, id == 20 ? 1 : 0);
  const std::vector<gint32> ids{30, 99, 10, 20};
  const auto document = [&] { return take(chosen_events_document(ids, nullptr, generated)); };
  std::string text = document();
  EXPECT_THAT(text, HasSubstr("<AantalEvents>4</AantalEvents>"));
  EXPECT_LT(text.find("<PostID>30<"), text.find("<PostID>10<"));
  EXPECT_LT(text.find("<PostID>10<"), text.find("<PostID>20<"));
  EXPECT_NE(text.find("<PostID>20<"), std::string::npos);
  EXPECT_THAT(text, HasSubstr("<Pos>2</Pos>"));
  filter->perCategory = 1;
  apply();
  text = document();
  const std::size_t sound = text.find("catName=\"Geluid\"");
  EXPECT_LT(text.find("<PostID>30<"), text.find("<PostID>10<"));
  EXPECT_LT(text.find("<PostID>10<"), sound);
  EXPECT_LT(sound, text.find("<PostID>20<"));
}

TEST_F(DocumentTest, NoChosenPostingsGiveAnEmptyDocument) {
  const std::string text = take(zox_events_sort_ids(nullptr, 0, nullptr));
  EXPECT_THAT(text, HasSubstr("<AantalEvents>0</AantalEvents>"));
  EXPECT_EQ(text.find("<Event>"), std::string::npos);
}

TEST_F(DocumentTest, BeforeAnyFilterTheFilteredViewIsEmpty) {
  add(10, 1);
  EXPECT_EQ(filtered(), golden("document_empty.xml"));
}

TEST_F(DocumentTest, ShowsAllInOneList) {
  zox_watchlist_add(42);
  zox_watchlist_add(43);
  add(10, 1, "een");
  filter->sortMode = 1;
  filter->sortAscending = 1;
  apply();
  EXPECT_EQ(filtered(), golden("document_flat.xml"));
}

TEST_F(DocumentTest, ShowsABlockForEachMainCategory) {
  add(20, 0, "nul");
  add(22, 2, "twee");
  filter->sortMode = 3;
  filter->perCategory = 1;
  apply();
  EXPECT_EQ(filtered(), golden("document_per_category.xml"));
}

TEST_F(DocumentTest, TheTotalListsAllButStatesTheFilteredNumber) {
  add(10, 1);
  add(11, 2);
  add(12, -1);
  filter->cat = 1;
  apply();
  const std::string view = filtered();
  EXPECT_EQ(content_of(view, "AantalEvents"), "1");
  EXPECT_EQ(count_of(view, "<Event>"), 1U);
  const std::string all = total();
  EXPECT_EQ(content_of(all, "AantalEvents"), "1");
  EXPECT_EQ(count_of(all, "<Event>"), 3U);
}

TEST_F(DocumentTest, OnlyTheNumberOneStandsForTheFilteredSet) {
  add(10, 1);
  for (const gint32 other : {0, 2, -1, 257})
    EXPECT_EQ(count_of(take(zox_events_sort(other, nullptr)), "<Event>"), 1U) << other;
  EXPECT_EQ(count_of(take(zox_events_sort(1, nullptr)), "<Event>"), 0U);
}

TEST_F(DocumentTest, PostingsOfNoMainCategoryStandInNoBlock) {
  add(10, -1);
  add(11, 4);
  add(12, 3);
  filter->perCategory = 1;
  apply();
  const std::string xml = total();
  EXPECT_EQ(count_of(xml, "<Event>"), 1U);
  EXPECT_EQ(content_of(xml, "PostID"), "12");
  EXPECT_EQ(count_of(xml, "<CatEvents "), 4U);
}

/** The contents of an element, in order. */
std::vector<std::string> contents_of(const std::string &xml, const std::string &element) {
  std::vector<std::string> contents;
  const std::string opening = "<" + element + ">";
  for (std::size_t at = xml.find(opening); at != std::string::npos; at = xml.find(opening, at + 1))
    contents.push_back(content_of(xml.substr(at), element));
  return contents;
}

gint collect_id(gpointer, ZoxEvent *event, gpointer ids) {
  static_cast<std::vector<std::string> *>(ids)->push_back(std::to_string(event->postId));
  return 0;
}

TEST_F(DocumentTest, PositionsFollowTheWalk) {
  for (gint32 postId = 1; postId <= 50; ++postId)
    add(postId * 37, postId % 4);
  apply();
  std::vector<std::string> walked;
  zox_eventlist_foreach(core->eventlist, 1, 1, collect_id, &walked);
  std::vector<std::string> positions;
  for (int position = 0; position < 50; ++position)
    positions.push_back(std::to_string(position));
  const std::string xml = filtered();
  EXPECT_EQ(contents_of(xml, "PostID"), walked);
  EXPECT_EQ(contents_of(xml, "Pos"), positions);
}

TEST_F(DocumentTest, PositionsBeginAnewInEachBlock) {
  for (gint32 postId = 1; postId <= 8; ++postId)
    add(postId, postId % 4);
  filter->perCategory = 1;
  apply();
  const std::string xml = filtered();
  EXPECT_THAT(contents_of(xml, "Pos"), ElementsAre("0", "1", "0", "1", "0", "1", "0", "1"));
  EXPECT_THAT(contents_of(xml, "AantalEvents"), ElementsAre("8", "2", "2", "2", "2"));
}

TEST_F(DocumentTest, TheTwoViewsAreTheDocumentOfNow) {
  add(10, 1);
  const std::string view = take(zox_events_sort_filtered(nullptr));
  EXPECT_EQ(count_of(view, "<Event>"), 0U);
  EXPECT_THAT(content_of(view, "DateTimeGenerated"),
              testing::MatchesRegex("[0-9][0-9]-[0-9][0-9] \\([0-9][0-9]:[0-9][0-9]\\)"));
  EXPECT_EQ(count_of(take(zox_events_sort_total(nullptr)), "<Event>"), 1U);
}

TEST_F(DocumentTest, ATimeThatCannotBeFormattedIsANullText) {
  const LogCapture log;
  const std::string xml = take(events_document(true, nullptr, std::numeric_limits<gint64>::max()));
  EXPECT_EQ(content_of(xml, "DateTimeGenerated"), "(null)");
  EXPECT_THAT(log.warnings(), ElementsAre(HasSubstr("zox_string_date(): ")));
}

TEST_F(DocumentTest, ThePreviousCheckIsPrintedInThirtyTwoBits) {
  core->config->prevCheck = (gint64{1} << 32) - 1;
  EXPECT_EQ(content_of(total(), "PrevCheck"), "-1");
}

ZoxString *spoil(ZoxString *text) {
  ZoxString *converted = in_braces(text);
  g_string_assign(text, "een heel andere en veel langere tekst dan er stond");
  return converted;
}

TEST_F(DocumentTest, AConversionWorksOnCopies) {
  const OwnedEvent event = full_event();
  add_event(*event);
  const std::string xml = total(spoil);
  EXPECT_THAT(xml, AllOf(HasSubstr("<Des><![CDATA[{omschrijving}]]></Des>"),
                         HasSubstr("<Body><![CDATA[{mooi}]]></Body>")));
  EXPECT_EQ(total(in_braces), xml);
}

ZoxString *replace_posting(ZoxString *text) {
  auto *object = static_cast<ZOXEventObject *>(
      g_hash_table_lookup(core->eventlist->tree, GINT_TO_POINTER(4711)));
  const OwnedEvent other(zox_event_new());
  zox_event_object_set_event(object, other.get());
  return in_braces(text);
}

TEST_F(DocumentTest, AConversionMayReplaceThePosting) {
  add_event(*full_event());
  EXPECT_THAT(total(replace_posting), AllOf(HasSubstr("<PostID>4711</PostID>"),
                                            HasSubstr("<Des><![CDATA[{omschrijving}]]></Des>"),
                                            HasSubstr("<Sig><![CDATA[{groet}]]></Sig>")));
}

TEST_F(DocumentTest, ViewsMayBeBuiltAtTheSameTime) {
  for (gint32 postId = 1; postId <= 200; ++postId)
    add(postId, postId % 4, "titel");
  add_event(*full_event());
  const std::string alone = total(in_braces);
  std::string first;
  std::string second;
  std::thread other([&] { first = total(in_braces); });
  second = total(in_braces);
  other.join();
  EXPECT_EQ(first, alone);
  EXPECT_EQ(second, alone);
}

TEST_F(DocumentTest, PostingsMayArriveMeanwhile) {
  for (gint32 postId = 1; postId <= 100; ++postId)
    add(postId, 0, "titel");
  std::thread other([] {
    for (gint32 postId = 50; postId <= 150; ++postId)
      add(postId, 1, "een andere titel");
  });
  const std::size_t shown = count_of(total(), "<Event>");
  other.join();
  EXPECT_GE(shown, 100U);
  EXPECT_LE(shown, 150U);
  EXPECT_EQ(count_of(total(), "<Event>"), 150U);
}

std::string sort_instructions(gint32 mode, gint32 ascending) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->sortMode = mode;
  filter->sortAscending = ascending;
  return take(zox_events_sort_apply_filter(filter.get()));
}

TEST(SortInstructions, NameTheFieldAndTheDirection) {
  const std::string down = "\t<SortRichting>descending</SortRichting>\n";
  EXPECT_EQ(sort_instructions(0, 0), "\t<SortMode>Stamp</SortMode>\n" + down);
  EXPECT_EQ(sort_instructions(1, 0), "\t<SortMode>Title</SortMode>\n" + down);
  EXPECT_EQ(sort_instructions(2, 0), "\t<SortMode>Poster</SortMode>\n" + down);
  EXPECT_EQ(sort_instructions(3, 0), "\t<SortMode>Rating</SortMode>\n" + down);
  const std::string up = "\t<SortRichting>ascending</SortRichting>\n";
  EXPECT_EQ(sort_instructions(2, 1), "\t<SortMode>Poster</SortMode>\n" + up);
  EXPECT_EQ(sort_instructions(2, -1), "\t<SortMode>Poster</SortMode>\n" + up);
}

TEST(SortInstructions, AnUnknownFieldIsWarnedAboutAndLeftOut) {
  const LogCapture log;
  const std::string down = "\t<SortRichting>descending</SortRichting>\n";
  EXPECT_EQ(sort_instructions(7, 0), down);
  EXPECT_EQ(sort_instructions(4, 0), down);
  EXPECT_EQ(sort_instructions(-1, 0), down);
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_events_sort_apply_filter(): Onbekend sorteerveld 7\n",
                          "zox_events_sort_apply_filter(): Onbekend sorteerveld 4\n",
                          "zox_events_sort_apply_filter(): Onbekend sorteerveld -1\n"));
}

class PageScriptTest : public DisplayTest {
protected:
  static std::string script() {
    TextWriter out;
    add_page_script(out);
    return take(out.release());
  }
};

TEST_F(PageScriptTest, NamesTheDataDirectoryInEightPlaces) {
  EXPECT_EQ(script(), golden("page_script.txt"));
}

TEST_F(PageScriptTest, BackslashesBecomeSlashes) {
  zox_file_set_data_dir("C:\\velkor  data");
  EXPECT_EQ(count_of(script(), "'file://C:/velkor%20%20data/images/"), 6U);
  EXPECT_EQ(count_of(script(), "\"file://C:/velkor%20%20data/images/"), 2U);
}

TEST_F(PageScriptTest, APathMayLookLikeAPlaceholder) {
  zox_file_set_data_dir("/%s/%d");
  EXPECT_EQ(count_of(script(), "file:///%s/%d/images/"), 8U);
}

TEST_F(DocumentTest, TheScriptIsCutLikeAnyLineOfTheHead) {
  zox_file_set_data_dir(("/" + std::string(2000, 'x')).c_str());
  const std::string xml = filtered();
  const std::size_t start = xml.find("\t\t<WatchlistJS>");
  const std::string script = xml.substr(start, xml.find("</Events>") - start);
  EXPECT_EQ(script.size(), 8191U);
  EXPECT_TRUE(script.ends_with("xxx"));
}

TEST_F(DocumentTest, TheWatchlistIsNotCut) {
  for (gint32 postId = 1000; postId < 1400; ++postId)
    core->config->watchlist = g_slist_prepend(core->config->watchlist, zox_string_integer(postId));
  EXPECT_EQ(count_of(filtered(), "\t<Watchlist>1"), 400U);
}

using DocumentDeathTest = DocumentTest;

TEST_F(DocumentDeathTest, NeedsCoreSettingsAndDataDirectory) {
  EXPECT_DEATH(
      {
        zox_file_free_data_dir();
        zox_events_sort_total(nullptr);
      },
      "assertion failed: \\(data_dir\\)");
  EXPECT_DEATH(
      {
        core->config = nullptr;
        zox_events_sort_total(nullptr);
      },
      "zox_events_sort: assertion failed: \\(core->config\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_events_sort_total(nullptr);
      },
      "zox_events_sort: assertion failed: \\(core\\)");
}

}  // namespace
