/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filterlist.h>

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include <velkor/zox_file.h>

#include "support/slist.h"
#include "tests/support/filter_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using test::read_file;
using test::write_file;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ZoxFilterlistDocument : public test::FilterTest {
protected:
  ZoxFilterlistDocument() : path(cache_file("velkor.filters")) {}

  /** Loads a file of that content; what is said on standard error meanwhile. */
  [[nodiscard]] std::string load(std::string_view content) const {
    write_file(path, content);
    testing::internal::CaptureStderr();
    zox_filterlist_load(core->filterlist);
    return testing::internal::GetCapturedStderr();
  }

  /** Loads a "Filters" document of that content, which holds one filter, and hands that out. */
  [[nodiscard]] const ZoxFilter *load_one(const std::string &content) const {
    EXPECT_EQ(load("<Filters><Filter>" + content + "</Filter></Filters>"), "");
    EXPECT_EQ(g_slist_length(core->filterlist->filters), 1U);
    return static_cast<const ZoxFilter *>(core->filterlist->filters->data);
  }

  /** The contents of the backups of the filters file. */
  [[nodiscard]] std::vector<std::string> backups() const {
    std::vector<std::string> contents;
    for (const auto &entry : std::filesystem::directory_iterator(path.parent_path())) {
      if (entry.path().filename().string().starts_with("velkor.filters.onleesbaar-"))
        contents.push_back(read_file(entry.path()));
    }
    return contents;
  }

  std::filesystem::path path;
};

std::string joined(GSList *list) {
  const OwnedString text(zox_splitted_list_concat(list));
  return text->str;
}

TEST_F(ZoxFilterlistDocument, FirstRunWritesTheDefaults) {
  zox_filterlist_load(core->filterlist);
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 16U);
  EXPECT_EQ(read_file(path), read_file(VELKOR_TEST_DIR "/golden/default.filters"));
}

TEST_F(ZoxFilterlistDocument, DefaultsAreReadBackAsTheyWere) {
  zox_filterlist_load(core->filterlist);
  const std::string first = read_file(path);
  zox_filterlist_load(core->filterlist);
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 16U);
  zox_filterlist_save(core->filterlist);
  EXPECT_EQ(read_file(path), first);
}

TEST_F(ZoxFilterlistDocument, ReadsEveryField) {
  const ZoxFilter *filter = load_one("<filterNaam>naam</filterNaam><cat>2</cat><sCat>7</sCat>"
                                     "<extra_tag>HD</extra_tag><tag>a0</tag><tag>d3</tag>");
  EXPECT_STREQ(filter->name->str, "naam");
  EXPECT_EQ(filter->cat, 2);
  EXPECT_EQ(filter->sCat, 7);
  EXPECT_STREQ(filter->extraTag->str, "HD");
  EXPECT_EQ(joined(filter->tags), "|a0|d3|");
}

TEST_F(ZoxFilterlistDocument, NamesAreReadRegardlessOfCase) {
  EXPECT_EQ(load("<filters><FILTER><FILTERNAAM>n</FILTERNAAM><CAT>1</CAT><scat>2</scat>"
                 "<EXTRA_tag>x</EXTRA_tag><TAG>b1</TAG></FILTER></filters>"),
            "");
  ASSERT_EQ(g_slist_length(core->filterlist->filters), 1U);
  const auto *filter = static_cast<const ZoxFilter *>(core->filterlist->filters->data);
  EXPECT_STREQ(filter->name->str, "n");
  EXPECT_EQ(filter->cat, 1);
  EXPECT_EQ(filter->sCat, 2);
  EXPECT_STREQ(filter->extraTag->str, "x");
  EXPECT_EQ(joined(filter->tags), "|b1|");
}

TEST_F(ZoxFilterlistDocument, TheLastOfAFieldWins) {
  const ZoxFilter *filter =
      load_one("<filterNaam>a</filterNaam><cat>1</cat><filterNaam>b</filterNaam><cat>2</cat>"
               "<extra_tag>c</extra_tag><extra_tag>d</extra_tag>");
  EXPECT_STREQ(filter->name->str, "b");
  EXPECT_EQ(filter->cat, 2);
  EXPECT_STREQ(filter->extraTag->str, "d");
}

TEST_F(ZoxFilterlistDocument, WhatIsMissingStaysUnset) {
  const ZoxFilter *filter = load_one("<iets>anders</iets>");
  EXPECT_EQ(filter->name, nullptr);
  EXPECT_EQ(filter->cat, -1);
  EXPECT_EQ(filter->sCat, -1);
  EXPECT_EQ(filter->extraTag, nullptr);
  EXPECT_EQ(filter->tags, nullptr);
}

TEST_F(ZoxFilterlistDocument, ElementsWithoutText) {
  const ZoxFilter *filter = load_one("<filterNaam/><cat/><sCat></sCat><tag/><tag>a1</tag>");
  EXPECT_EQ(filter->name, nullptr);
  EXPECT_EQ(filter->cat, 0);
  EXPECT_EQ(filter->sCat, 0);
  EXPECT_EQ(joined(filter->tags), "|a1|");
}

TEST_F(ZoxFilterlistDocument, NumbersAreReadUpToTheFirstOtherCharacter) {
  const ZoxFilter *filter = load_one("<cat> 3x</cat><sCat>x3</sCat>");
  EXPECT_EQ(filter->cat, 3);
  EXPECT_EQ(filter->sCat, 0);
}

TEST_F(ZoxFilterlistDocument, FiltersKeepTheirOrderAmongOtherChildren) {
  EXPECT_EQ(load("<Filters>tekst<Filter><cat>1</cat></Filter><!-- x --><Ander/>"
                 "<Filter/><Filter><cat>2</cat></Filter></Filters>"),
            "");
  std::vector<gint32> categories;
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters))
    categories.push_back(filter->cat);
  EXPECT_THAT(categories, ElementsAre(1, -1, 2));
}

TEST_F(ZoxFilterlistDocument, LoadReplacesTheFiltersHeld) {
  add_filter(3, "weg");
  EXPECT_EQ(load("<Filters><Filter><cat>1</cat></Filter></Filters>"), "");
  ASSERT_EQ(g_slist_length(core->filterlist->filters), 1U);
  EXPECT_EQ(static_cast<const ZoxFilter *>(core->filterlist->filters->data)->cat, 1);
}

TEST_F(ZoxFilterlistDocument, WritesWhatIsSetInOrder) {
  const OwnedFilter filter = test::filter_of(-1);
  filter->extraTag = zox_string_new("HD & meer");
  filter->tags = zox_splitted_list_split("d1|a0");
  zox_filterlist_append_filter(core->filterlist, filter.get());
  zox_filterlist_save(core->filterlist);
  EXPECT_EQ(read_file(path), "<?xml version=\"1.0\"?>\n"
                             "<Filters>\n"
                             "  <Filter>\n"
                             "    <cat>-1</cat>\n"
                             "    <sCat>-1</sCat>\n"
                             "    <extra_tag><![CDATA[HD & meer]]></extra_tag>\n"
                             "    <tag><![CDATA[d1]]></tag>\n"
                             "    <tag><![CDATA[a0]]></tag>\n"
                             "  </Filter>\n"
                             "</Filters>\n");
}

TEST_F(ZoxFilterlistDocument, PrintsWhatItSaves) {
  zox_filterlist_load(core->filterlist);
  const OwnedString printed(zox_filterlist_print(core->filterlist->filters));
  EXPECT_EQ(printed->str, read_file(path));
}

TEST_F(ZoxFilterlistDocument, ParsesWhatItPrints) {
  zox_filterlist_load(core->filterlist);
  const OwnedString printed(zox_filterlist_print(core->filterlist->filters));
  GSList *filters = nullptr;
  ASSERT_EQ(zox_filterlist_parse(printed.get(), &filters), 0);
  EXPECT_EQ(g_slist_length(filters), 16U);
  const OwnedString again(zox_filterlist_print(filters));
  EXPECT_STREQ(again->str, printed->str);
  free_filters(filters);
}

TEST_F(ZoxFilterlistDocument, ParsesNoOtherDocument) {
  const OwnedString broken(zox_string_new("<Filters><Filter>"));
  const OwnedString other(zox_string_new("<Events><Filter><cat>1</cat></Filter></Events>"));
  const OwnedString empty(zox_string_new("<filters/>"));
  GSList *filters = core->filterlist->filters;
  EXPECT_EQ(zox_filterlist_parse(broken.get(), &filters), 1);
  EXPECT_EQ(filters, nullptr);
  EXPECT_EQ(zox_filterlist_parse(other.get(), &filters), 2);
  EXPECT_EQ(zox_filterlist_parse(empty.get(), &filters), 0);
  EXPECT_EQ(filters, nullptr);
}

TEST_F(ZoxFilterlistDocument, TextsSurviveWhateverTheyHold) {
  const char *text = " <b>&amp; ]]> \"'\u00e9 ";
  add_filter(0, text);
  add_filter(1, "");
  zox_filterlist_save(core->filterlist);
  zox_filterlist_load(core->filterlist);
  ASSERT_EQ(g_slist_length(core->filterlist->filters), 2U);
  EXPECT_STREQ(static_cast<const ZoxFilter *>(core->filterlist->filters->data)->name->str, text);
}

TEST_F(ZoxFilterlistDocument, WhatXmlCannotHoldIsLeftOut) {
  const OwnedFilter filter = test::filter_of(0);
  filter->name = zox_string_new("een\1twee\xff");
  filter->extraTag = zox_string_new("\x1fHD");
  filter->tags = zox_splitted_list_split("a\b0");
  zox_filterlist_append_filter(core->filterlist, filter.get());
  zox_filterlist_save(core->filterlist);
  zox_filterlist_load(core->filterlist);
  ASSERT_EQ(g_slist_length(core->filterlist->filters), 1U);
  const auto *read = static_cast<const ZoxFilter *>(core->filterlist->filters->data);
  EXPECT_STREQ(read->name->str, "eentwee\ufffd");
  EXPECT_STREQ(read->extraTag->str, "HD");
  EXPECT_EQ(joined(read->tags), "|a0|");
}

TEST_F(ZoxFilterlistDocument, FilterWithoutNameStaysWithout) {
  EXPECT_EQ(load_one("<cat>1</cat>")->name, nullptr);
  zox_filterlist_save(core->filterlist);
  EXPECT_EQ(read_file(path).find("filterNaam"), std::string::npos);
}

TEST_F(ZoxFilterlistDocument, TagWithoutTextIsNotWritten) {
  const OwnedFilter filter = test::filter_of(0);
  zox_filterlist_append_filter(core->filterlist, filter.get());
  auto *held = static_cast<ZoxFilter *>(core->filterlist->filters->data);
  held->tags = g_slist_prepend(nullptr, nullptr);
  zox_filterlist_save(core->filterlist);
  g_slist_free(std::exchange(held->tags, nullptr));
  EXPECT_EQ(read_file(path).find("<tag>"), std::string::npos);
}

TEST_F(ZoxFilterlistDocument, EmptyRootWarnsAndStaysEmpty) {
  const test::LogCapture log;
  EXPECT_EQ(load("<Filters/>"), "");
  EXPECT_THAT(log.warnings(), ElementsAre("zox_filter_parse(): no children of root-node!\n"));
  EXPECT_EQ(core->filterlist->filters, nullptr);
  EXPECT_EQ(read_file(path), "<Filters/>");
}

TEST_F(ZoxFilterlistDocument, FileWithoutFiltersIsNotReplacedByTheDefaults) {
  EXPECT_EQ(load("<Filters> </Filters>"), "");
  EXPECT_EQ(core->filterlist->filters, nullptr);
  EXPECT_EQ(read_file(path), "<Filters> </Filters>");
}

TEST_F(ZoxFilterlistDocument, FailedSaveIsOnlyToldByTheLastError) {
  const test::LogCapture log;
  std::filesystem::create_directory(path);
  zox_filterlist_save(core->filterlist);
  EXPECT_THAT(log.warnings(), IsEmpty());
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
  EXPECT_EQ(zox_file_last_error()->path, path.string());
}

TEST_F(ZoxFilterlistDocument, OutcomeTellsWhatTheFileWas) {
  zox_filterlist_load(core->filterlist);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  zox_filterlist_load(core->filterlist);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE);
  EXPECT_NE(load(""), "");
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_EMPTY);
  EXPECT_NE(load("<Groups/>"), "");
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_DAMAGED);
  EXPECT_EQ(zox_file_last_error()->message,
            "cannot read " + path.string() + ": the root element is not Filters");
}

TEST_F(ZoxFilterlistDocument, DefaultsThatCannotBeWrittenAreTold) {
  std::filesystem::remove_all(path.parent_path());
  zox_filterlist_load(core->filterlist);
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 16U);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
}

/** The file stays as it is at the load, and is kept beside the new one at the next save. */
class ZoxFilterlistUnreadable : public ZoxFilterlistDocument {
protected:
  void expect_kept(const std::string &content) {
    EXPECT_EQ(core->filterlist->filters, nullptr);
    EXPECT_EQ(read_file(path), content);
    const test::LogCapture log;
    zox_filterlist_save(core->filterlist);
    EXPECT_THAT(log.warnings(), ElementsAre(::testing::StartsWith("zox_filterlist_save(): ")));
    EXPECT_THAT(backups(), ElementsAre(content));
    EXPECT_EQ(read_file(path), "<?xml version=\"1.0\"?>\n<Filters/>\n");
    zox_filterlist_save(core->filterlist);
    EXPECT_EQ(backups().size(), 1U);
  }
};

TEST_F(ZoxFilterlistUnreadable, NotWellFormed) {
  const std::string content = "<Filters><Filter></Filters>";
  EXPECT_THAT(load(content), ::testing::HasSubstr("zox_filter_parse(): empty document!\n"));
  expect_kept(content);
}

TEST_F(ZoxFilterlistUnreadable, NotXml) {
  const std::string content = "geen xml";
  EXPECT_THAT(load(content), ::testing::HasSubstr("zox_filter_parse(): empty document!\n"));
  expect_kept(content);
}

TEST_F(ZoxFilterlistUnreadable, AnotherDocument) {
  const std::string content = "<Groups><Group/></Groups>";
  EXPECT_EQ(load(content), "zox_filter_parse(): document of the wrong type, root node != Filters");
  expect_kept(content);
}

TEST_F(ZoxFilterlistUnreadable, EntityBomb) {
  const std::string content =
      "<!DOCTYPE Filters [<!ENTITY a \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\">"
      "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
      "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">"
      "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">"
      "<!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\">"
      "<!ENTITY f \"&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;\">"
      "]><Filters><Filter><filterNaam>&f;</filterNaam></Filter></Filters>";
  EXPECT_THAT(load(content), ::testing::HasSubstr("zox_filter_parse(): empty document!\n"));
  expect_kept(content);
}

TEST_F(ZoxFilterlistUnreadable, EmptyFileIsNothingToKeep) {
  EXPECT_EQ(load(""), "zox_filter_parse(): empty document!\n");
  EXPECT_EQ(core->filterlist->filters, nullptr);
  zox_filterlist_save(core->filterlist);
  EXPECT_THAT(backups(), IsEmpty());
}

TEST_F(ZoxFilterlistUnreadable, GoodFileInItsPlaceIsNotKept) {
  EXPECT_NE(load("geen xml"), "");
  EXPECT_EQ(load("<Filters><Filter/></Filters>"), "");
  zox_filterlist_save(core->filterlist);
  EXPECT_THAT(backups(), IsEmpty());
}

}  // namespace
}  // namespace velkor
