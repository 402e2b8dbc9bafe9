/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The event list's cache file. */
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <libxml/xmlIO.h>

#include <velkor/zox_events_xml.h>
#include <velkor/zox_file.h>
#include <velkor/zox_string.h>

#include "support/xml.h"
#include "tests/support/log_capture.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor {
namespace {

using test::basic_event;
using test::contents;
using test::describe;
using test::describe_basic;
using test::event_in_state;
using test::ids;
using testing::ElementsAre;
using testing::HasSubstr;

class ZoxEventlistFile : public test::EventlistTest {
protected:
  [[nodiscard]] std::filesystem::path cache() const { return cache_file("velkor.posts.gz"); }

  ZoxErrorCode load() {
    char *message = nullptr;
    const ZoxErrorCode code = zox_eventlist_load(list, &message);
    const OwnedText owned(message);
    error = message == nullptr ? "none" : message;
    return code;
  }

  /** The files in the cache directory. */
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(sandbox.cache()))
      names.push_back(entry.path().filename());
    return names;
  }

  /** The bytes of all postings saved as one tree. */
  [[nodiscard]] std::string saved_as_a_tree() const {
    const xml::Document document(xmlNewDoc(xml::chars("1.0")));
    xmlNode *root = xmlNewDocNode(document.get(), nullptr, xml::chars("Events"), nullptr);
    xmlDocSetRootElement(document.get(), root);
    for (const auto &[id, text] : contents(list))
      xmlAddChild(root,
                  zox_events_xml_add_basic(find_object(list->tree, id)->event, document.get()));
    const std::string path = cache_file("boom.xml");
    xmlIndentTreeOutput = 1;
    xmlSetDocCompressMode(document.get(), 0);
    xmlSaveFormatFile(path.c_str(), document.get(), 1);
    const std::string text = test::read_file(path);
    std::filesystem::remove(path);
    return text;
  }

  std::string error;
};

TEST_F(ZoxEventlistFile, SavesAReadableDocument) {
  const OwnedEvent event = test::full_event(7);
  add(event);
  ASSERT_EQ(zox_eventlist_save(list), 1);
  EXPECT_EQ(test::read_gzip(cache()), R"(<?xml version="1.0"?>
<Events>
  <Event Code="1">
    <PostID>7</PostID>
    <Stamp>1300000000</Stamp>
    <Updated>1300000100</Updated>
    <Status>1</Status>
    <Groups><![CDATA[|12|40|]]></Groups>
    <FName><![CDATA[een.bestand]]></FName>
    <Title><![CDATA[Een titel]]></Title>
    <Poster><![CDATA[plaatser]]></Poster>
    <Link><![CDATA[http://link.example/]]></Link>
    <Rating>80</Rating>
    <Cat>0</Cat>
    <SCat>3</SCat>
    <Tags><![CDATA[|a3|b1|]]></Tags>
    <Tag><![CDATA[vrije tekst]]></Tag>
  </Event>
</Events>
)");
}

TEST_F(ZoxEventlistFile, BytesAreThoseOfAWholeTree) {
  EXPECT_EQ(zox_eventlist_save(list), 1);
  EXPECT_EQ(test::read_gzip(cache()), saved_as_a_tree());
  for (gint32 id = 1; id <= 50; ++id) {
    const OwnedEvent event = basic_event(id, id % 3 == 0 ? "caf\u00e9 ]]> <b>" : "titel");
    if (id % 2 == 0)
      replace_string(event->title, nullptr);
    if (id % 5 == 0)
      zox_splitted_list_free(&event->groups);
    add(event);
  }
  EXPECT_EQ(zox_eventlist_save(list), 1);
  EXPECT_EQ(test::read_gzip(cache()), saved_as_a_tree());
}

TEST_F(ZoxEventlistFile, IndentsWhateverTheFrontEndChose) {
  add(basic_event(1));
  xmlIndentTreeOutput = 0;
  EXPECT_EQ(zox_eventlist_save(list), 1);
  EXPECT_THAT(test::read_gzip(cache()), HasSubstr("\n    <PostID>1</PostID>\n"));
}

TEST_F(ZoxEventlistFile, CompressesAtLevelNine) {
  add(basic_event(1));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  const std::string bytes = test::read_file(cache());
  EXPECT_EQ(bytes.substr(0, 2), "\x1f\x8b");
  EXPECT_EQ(bytes[8], 2);  // the header's mark of the best compression
}

TEST_F(ZoxEventlistFile, ComesBackWithItsBasicFields) {
  const OwnedEvent event = test::full_event(7);
  add(event);
  const OwnedEvent bare(zox_event_new());
  bare->postId = -9;
  bare->poster = zox_string_new("p");
  add(bare);
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(zox_eventlist_save(list), 1);
    ASSERT_EQ(load(), 0U);
    EXPECT_EQ(error, "none");
  }
  const OwnedEvent loaded(zox_eventlist_lookup_id(list, 7));
  EXPECT_EQ(describe_basic(*loaded), describe_basic(*event));
  const OwnedEvent fresh(zox_event_new());
  EXPECT_EQ(describe(*loaded).substr(describe_basic(*loaded).size()),
            describe(*fresh).substr(describe_basic(*fresh).size()));
  EXPECT_EQ(held(-9), describe(*bare));
}

TEST_F(ZoxEventlistFile, LongDeletedPostingsAreNotSaved) {
  add(event_in_state(1, -2, 2 * test::day));
  add(event_in_state(2, -2, 3600));
  add(event_in_state(3, -3, 9 * test::day));
  add(event_in_state(4, 3, 9 * test::day));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  ASSERT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), ElementsAre(2, 3, 4));
}

TEST_F(ZoxEventlistFile, PostingThatCannotBeWrittenLeavesTheOthersAlone) {
  const test::LogCapture log;
  add(basic_event(1, "a\x01"));
  add(basic_event(2, "caf\xe9"));
  add(basic_event(3));
  EXPECT_EQ(zox_eventlist_save(list), 1);
  EXPECT_EQ(log.warnings().size(), 2U);
  EXPECT_THAT(ids(list), ElementsAre(1, 2, 3));
  ASSERT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), ElementsAre(3));
}

TEST_F(ZoxEventlistFile, PostingWithoutPosterIsKeptWithAnEmptyOne) {
  const OwnedEvent event = basic_event(1);
  replace_string(event->poster, nullptr);
  add(event);
  EXPECT_EQ(zox_eventlist_save(list), 1);
  ASSERT_EQ(load(), 0U);
  EXPECT_THAT(held(1), HasSubstr("poster=[]"));
}

TEST_F(ZoxEventlistFile, LoadDropsWhatWasThere) {
  add(basic_event(1));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  add(basic_event(2));
  gpointer old = find_object(list->tree, 1);
  g_object_add_weak_pointer(static_cast<GObject *>(old), &old);
  EXPECT_EQ(load(), 0U);
  EXPECT_EQ(old, nullptr);
  EXPECT_THAT(ids(list), ElementsAre(1));
}

TEST_F(ZoxEventlistFile, MissingFileGivesAnEmptyList) {
  add(basic_event(1));
  EXPECT_EQ(load(), 11U);
  EXPECT_EQ(error, "none");
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 0U);
}

TEST_F(ZoxEventlistFile, PlaceForTheMessageIsOptional) {
  EXPECT_EQ(zox_eventlist_load(list, nullptr), 11U);
}

TEST_F(ZoxEventlistFile, BrokenFileGivesAnEmptyListWithoutADump) {
  add(basic_event(1));
  test::write_gzip(cache(), "<Events><Event>");
  testing::internal::CaptureStdout();
  EXPECT_EQ(load(), 11U);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_THAT(error, HasSubstr("Premature end of data"));
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 0U);
}

TEST_F(ZoxEventlistFile, TruncatedFileIsBackedUp) {
  const test::LogCapture log;
  for (gint32 id = 1; id <= 200; ++id)
    add(basic_event(id));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  std::filesystem::resize_file(cache(), std::filesystem::file_size(cache()) / 2);
  const std::string remains = test::read_file(cache());
  EXPECT_EQ(load(), 11U);
  add(basic_event(1000));
  EXPECT_EQ(zox_eventlist_save(list), 1);
  bool kept = false;
  for (const std::string &name : files()) {
    if (name.find("velkor.posts.gz.onleesbaar-") == 0)
      kept = test::read_file(cache_file(name)) == remains;
  }
  EXPECT_TRUE(kept);
  EXPECT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), ElementsAre(1000));
}

TEST_F(ZoxEventlistFile, EmptyListIsNotBackedUp) {
  EXPECT_EQ(zox_eventlist_save(list), 1);
  EXPECT_EQ(test::read_gzip(cache()), "<?xml version=\"1.0\"?>\n<Events/>\n");
  EXPECT_EQ(load(), 11U);
  EXPECT_EQ(error, "zox_events_parse(): no children of root-node!");
  EXPECT_EQ(zox_eventlist_save(list), 1);
  EXPECT_THAT(files(), ElementsAre("velkor.posts.gz"));
}

TEST_F(ZoxEventlistFile, PlainFileOfAnEarlierVersionIsTakenOver) {
  test::write_file(cache_file("velkor.posts"), test::document_of({test::posting_element(4)}));
  EXPECT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), ElementsAre(4));
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.posts")));
}

TEST_F(ZoxEventlistFile, FailedSaveIsToldAndLeavesNothingBehind) {
  const test::LogCapture log;
  add(basic_event(1));
  std::filesystem::create_directory(cache());
  EXPECT_EQ(zox_eventlist_save(list), 0);
  EXPECT_THAT(files(), ElementsAre("velkor.posts.gz"));
  EXPECT_THAT(log.warnings(), ElementsAre("zox_eventlist_save(): cannot write " + cache().string() +
                                          ": Is a directory"));
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
  EXPECT_EQ(zox_file_last_error()->path, cache().string());
}

TEST_F(ZoxEventlistFile, OutcomeTellsWhatTheFileWas) {
  const auto expect = [this](ZoxFileStatus status, const std::string &message) {
    load();
    EXPECT_EQ(zox_file_last_error()->status, status) << message;
    EXPECT_EQ(zox_file_last_error()->path, cache().string());
    const char *words = zox_file_last_error()->message;
    EXPECT_EQ(words == nullptr ? "" : words, message);
  };
  const std::string unreadable = "cannot read " + cache().string() + ": ";
  expect(ZOX_FILE_MISSING, "there is no file " + cache().string());
  test::write_gzip(cache(), "");
  expect(ZOX_FILE_EMPTY, cache().string() + " is empty");
  test::write_gzip(cache(), "<Events/>");
  expect(ZOX_FILE_FINE, "");
  test::write_gzip(cache(), test::document_of({test::posting_element(4)}));
  expect(ZOX_FILE_FINE, "");
  test::write_gzip(cache(), "<Events>\n<Event>");
  expect(ZOX_FILE_DAMAGED, unreadable + "line 2: Premature end of data in tag Event line 2");
  test::write_gzip(cache(), "<Other/>");
  expect(ZOX_FILE_DAMAGED, unreadable + "the root element is not Events");
  test::write_gzip(cache(), std::string(10000, ' '));
  std::filesystem::resize_file(cache(), std::filesystem::file_size(cache()) - 9);
  expect(ZOX_FILE_DAMAGED, unreadable + "unexpected end of file");
  test::write_gzip(cache(), test::document_of({test::posting_element(4)}));
  std::string bytes = test::read_file(cache());
  bytes[bytes.size() - 6] = static_cast<char>(~bytes[bytes.size() - 6]);
  test::write_file(cache(), bytes);
  expect(ZOX_FILE_DAMAGED, unreadable + "incorrect data check");
}

TEST_F(ZoxEventlistFile, ListWithoutATableIsNotSaved) {
  g_hash_table_destroy(std::exchange(list->tree, nullptr));
  EXPECT_EQ(zox_eventlist_save(list), 0);
  EXPECT_TRUE(files().empty());
  list->tree = new_event_table();
}

TEST_F(ZoxEventlistFile, SavesOfSeveralThreadsAreEachWhole) {
  for (gint32 id = 1; id <= 100; ++id)
    add(basic_event(id));
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([this] {
      for (int round = 0; round < 5; ++round)
        EXPECT_EQ(zox_eventlist_save(list), 1);
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_THAT(files(), ElementsAre("velkor.posts.gz"));
  EXPECT_EQ(load(), 0U);
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 100U);
}

}  // namespace
}  // namespace velkor
