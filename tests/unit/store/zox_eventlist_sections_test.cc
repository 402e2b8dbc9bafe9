/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the cache file in sections saves: reading and writing of what has not changed. */
#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <velkor/zox_events_parse.h>
#include <velkor/zox_events_xml.h>
#include <velkor/zox_file.h>
#include <velkor/zox_string.h>

#include "store/deflate.h"
#include "store/event_digest.h"
#include "store/event_text.h"
#include "store/event_walk.h"
#include "store/eventlist_store.h"
#include "store/known_posts.h"
#include "support/xml.h"
#include "tests/support/log_capture.h"
#include "tests/unit/store/list_fixture.h"
#include "tests/unit/store/sectioned_file.h"

namespace velkor {
namespace {

using test::basic_event;
using test::contents;
using test::describe;
using test::ids;
using test::SectionText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

/** Text of some length that does not compress well, the same for the same number. */
std::string words(unsigned number) {
  std::mt19937 random(number);
  std::string text;
  for (int word = 0; word < 40; ++word)
    text += std::to_string(random()) + " ";
  return text;
}

std::string element_of(const ZoxEvent &event) {
  std::string text;
  append_element(text, event);
  return text;
}

class SectionedFile : public test::EventlistTest {
protected:
  SectionedFile() { std::filesystem::create_directories(sandbox.cache()); }

  [[nodiscard]] std::filesystem::path cache() const { return cache_file("velkor.posts.gz"); }
  [[nodiscard]] std::string bytes() const { return test::read_file(cache()); }
  [[nodiscard]] ino_t inode() const {
    struct stat status {};
    stat(cache().c_str(), &status);
    return status.st_ino;
  }

  ZoxErrorCode load() { return zox_eventlist_load(list, nullptr); }
  void save() { ASSERT_EQ(zox_eventlist_save(list), 1); }

  /** So many postings, of which some two hundred make up a section. */
  void fill(gint32 count) {
    for (gint32 id = 1; id <= count; ++id)
      add(basic_event(id, words(static_cast<unsigned>(id))));
  }

  /** The text of the list written as one tree by libxml2, in the order of the ids. */
  [[nodiscard]] std::string saved_from_scratch() const {
    const xml::Document document = xml::new_document("Events");
    std::map<gint32, ZOXEventObject *> objects;
    for_each_object(list->tree, [&objects](gpointer key, ZOXEventObject *object) {
      objects[GPOINTER_TO_INT(key)] = object;
    });
    for (const auto &[id, object] : objects) {
      if (xmlNode *element = zox_events_xml_add_basic(object->event, document.get()))
        xmlAddChild(xmlDocGetRootElement(document.get()), element);
    }
    xmlChar *text = nullptr;
    int size = 0;
    xmlIndentTreeOutput = 1;
    xmlDocDumpFormatMemory(document.get(), &text, &size, 1);
    const xml::Chars owned(text);
    return {xml::chars(text), static_cast<std::size_t>(size)};
  }

  /** What reading the file's text in one go brings. */
  [[nodiscard]] std::map<gint32, std::string> read_in_one_go() const {
    const OwnedObject<ZOXEventlist> other(zox_eventlist_new());
    const OwnedString text(test::zox(test::read_gzip(cache())));
    EXPECT_EQ(zox_events_parse(text.get(), &other->tree, nullptr, nullptr, 1), 0U);
    return contents(other.get());
  }

  void write(const std::vector<SectionText> &sections) {
    test::write_file(cache(), test::sectioned_file(sections));
  }

  /** Changes a byte of the file in its place; its size and its times stay. */
  void damage(std::size_t place) {
    struct stat status {};
    ASSERT_EQ(stat(cache().c_str(), &status), 0);
    {
      std::fstream file(cache(), std::ios::in | std::ios::out | std::ios::binary);
      file.seekg(static_cast<std::streamoff>(place));
      const auto byte = static_cast<char>(file.get() ^ 0x55);
      file.seekp(static_cast<std::streamoff>(place));
      file.put(byte);
    }
    const std::array times{status.st_atim, status.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, cache().c_str(), times.data(), 0), 0);
  }

  /** How many postings were counted in their category. */
  [[nodiscard]] static gint32 counted() {
    return static_cast<const ZoxCategory *>(core->categories->data)->count;
  }

  [[nodiscard]] bool has_backup() const {
    for (const auto &entry : std::filesystem::directory_iterator(sandbox.cache())) {
      if (entry.path().filename().string().starts_with("velkor.posts.gz.onleesbaar-"))
        return true;
    }
    return false;
  }
};

TEST_F(SectionedFile, ManyPostingsMakeSectionsOfAUsualSize) {
  fill(2000);
  save();
  const PostsLayout layout = test::layout_of(bytes());
  EXPECT_GT(layout.sections.size(), 5U);
  for (const PostsSection &section : layout.sections) {
    EXPECT_GE(section.text_size, 64U * 1024);
    EXPECT_LE(section.text_size, 256U * 1024);
    EXPECT_NE(section.digest, no_digest);
  }
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, EachSectionCanBeInflatedAlone) {
  fill(1000);
  save();
  const std::string file = bytes();
  const PostsLayout layout = test::layout_of(file);
  std::string text;
  Inflater inflater;
  for (std::size_t number = layout.sections.size(); number-- > 0;) {
    const PostsSection &section = layout.sections[number];
    text.clear();
    ASSERT_TRUE(
        inflater.append(file.substr(test::offset_of(layout, number), section.compressed_size),
                        section.text_size, Deflater::Part::inner, text));
    EXPECT_THAT(text, testing::StartsWith("  <Event Code=\"1\">\n"));
    EXPECT_THAT(text, testing::EndsWith("  </Event>\n"));
    EXPECT_EQ(checksum_of(text), section.checksum);
  }
}

TEST_F(SectionedFile, SavesWhatASaveFromScratchWouldAfterAnyEdits) {
  std::mt19937 random(42);
  const auto some_id = [&random] { return static_cast<gint32>(random() % 1500); };
  fill(900);
  for (int round = 0; round < 9; ++round) {
    SCOPED_TRACE(round);
    save();
    EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
    const auto expected = read_in_one_go();
    if (round % 3 != 0) {
      ASSERT_EQ(load(), 0U);
      EXPECT_EQ(contents(list), expected);
    }
    for (auto edits = random() % 30; edits > 0; --edits) {
      const gint32 id = some_id();
      switch (random() % 4) {
      case 0:
        add(basic_event(id, words(static_cast<unsigned>(random() % 100'000))));
        break;
      case 1:
        take_object(list->tree, id);
        break;
      case 2:  // as a front end may: around the list
        if (ZOXEventObject *object = find_object(list->tree, id))
          ++object->event->rating;
        break;
      default:  // what no file keeps
        if (ZOXEventObject *object = find_object(list->tree, id))
          ++object->event->kudos;
        break;
      }
    }
  }
}

TEST_F(SectionedFile, LoadsWhatReadingInOneGoBrings) {
  fill(1200);
  save();
  const auto expected = read_in_one_go();
  for (int round = 0; round < 2; ++round) {  // from the file, then from what is known of it
    ASSERT_EQ(load(), 0U);
    EXPECT_EQ(contents(list), expected);
  }
}

TEST_F(SectionedFile, SectionsThatDidNotChangeAreCopied) {
  fill(1000);
  save();
  // The same sections at another level: a copy keeps their size, writing anew does not.
  const std::string text = test::read_gzip(cache());
  const PostsLayout written = test::layout_of(bytes());
  std::vector<SectionText> sections;
  std::size_t place = document_begin.size();
  for (const PostsSection &section : written.sections) {
    sections.push_back({text.substr(place, section.text_size), section.digest, 1});
    place += section.text_size;
  }
  test::write_file(cache(), test::sectioned_file(sections, written.seed));
  const PostsLayout loose = test::layout_of(bytes());
  ASSERT_EQ(load(), 0U);
  ++find_object(list->tree, 500)->event->rating;
  save();
  const PostsLayout saved = test::layout_of(bytes());
  ASSERT_EQ(saved.sections.size(), loose.sections.size());
  int written_anew = 0;
  for (std::size_t number = 0; number < saved.sections.size(); ++number) {
    if (saved.sections[number].compressed_size != loose.sections[number].compressed_size)
      ++written_anew;
  }
  EXPECT_EQ(written_anew, 1);
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, FileThatIsWhatWouldBeWrittenIsLeftAlone) {
  fill(500);
  save();
  const ino_t before = inode();
  find_object(list->tree, 7)->event->kudos = 12;  // not in the file
  save();
  EXPECT_EQ(inode(), before);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE);
  EXPECT_EQ(zox_file_last_error()->path, cache().string());
  ASSERT_EQ(load(), 0U);
  save();
  EXPECT_EQ(inode(), before);
  find_object(list->tree, 7)->event->rating += 1;
  save();
  EXPECT_NE(inode(), before);
}

TEST_F(SectionedFile, RemovedFileIsWrittenAgain) {
  fill(10);
  save();
  std::filesystem::remove(cache());
  save();
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, FileOfSomebodyElseIsNotTrusted) {
  fill(600);
  save();
  test::write_file(cache(), test::sectioned_file({{element_of(*basic_event(9000))}}));
  ++find_object(list->tree, 1)->event->rating;
  save();
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, ByteThatChangedInASectionToKeepIsNoticed) {
  fill(1000);
  save();
  damage(test::offset_of(test::layout_of(bytes()), 1) + 100);
  ++find_object(list->tree, 1)->event->rating;  // in another section
  save();
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, ByteThatChangedKeepsAFileFromBeingLeftAlone) {
  fill(600);
  save();
  for (const std::size_t place : {std::size_t{30}, std::size_t{1000}, bytes().size() - 3}) {
    damage(place);
    save();
    EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch()) << place;
  }
}

TEST_F(SectionedFile, DamagedSectionCostsWhatADamagedDocumentDoes) {
  const test::LogCapture log;
  fill(1000);
  save();
  damage(test::offset_of(test::layout_of(bytes()), 2) + 100);
  EXPECT_EQ(load(), 11U);
  EXPECT_TRUE(ids(list).empty());
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_DAMAGED);
  add(basic_event(1));
  save();
  EXPECT_TRUE(has_backup());
  EXPECT_THAT(ids(list), ElementsAre(1));
}

TEST_F(SectionedFile, DamagedTableIsDoneWithout) {
  fill(300);
  save();
  const auto expected = contents(list);
  damage(40);
  ASSERT_EQ(load(), 0U);
  EXPECT_EQ(contents(list), expected);
  EXPECT_FALSE(decode_header(bytes()));
  save();
  EXPECT_TRUE(decode_header(bytes()));
  EXPECT_EQ(contents(list), expected);
}

TEST_F(SectionedFile, ReloadMakesNewObjectsWithoutDetails) {
  fill(300);
  save();
  ASSERT_EQ(load(), 0U);
  const OwnedEvent full = test::full_event(7);
  zox_event_object_set_event(find_object(list->tree, 7), full.get());
  save();
  find_object(list->tree, 8)->event->watcherHit = 1;
  gpointer old = find_object(list->tree, 8);
  g_object_add_weak_pointer(static_cast<GObject *>(old), &old);
  const OwnedObject<ZOXEventObject> held(
      static_cast<ZOXEventObject *>(g_object_ref(find_object(list->tree, 9))));
  ASSERT_EQ(load(), 0U);
  EXPECT_EQ(old, nullptr);
  EXPECT_EQ(contents(list), read_in_one_go());
  EXPECT_NE(find_object(list->tree, 9), held.get());
  EXPECT_EQ(describe(*held->event), describe(*find_object(list->tree, 9)->event));
}

TEST_F(SectionedFile, FileOutOfReachLeavesTheListAsItIs) {
  fill(300);
  save();
  const auto expected = contents(list);
  const test::LogCapture log;
  damage(1000);
  EXPECT_EQ(reload(list), 1U);
  EXPECT_EQ(contents(list), expected);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_UNREADABLE);
  std::filesystem::remove(cache());
  EXPECT_EQ(reload(list), 1U);
  EXPECT_EQ(contents(list), expected);
  EXPECT_THAT(log.warnings(), SizeIs(2));
  save();
  EXPECT_EQ(reload(list), 0U);
  EXPECT_EQ(contents(list), expected);
}

TEST_F(SectionedFile, ReloadTakesThePostingsFromMemory) {
  fill(500);
  save();
  const auto records = [this] {
    std::map<gint32, const ZoxEvent *> found;
    for_each_object(list->tree, [&found](gpointer key, ZOXEventObject *object) {
      found[GPOINTER_TO_INT(key)] = object->event;
    });
    return found;
  };
  const auto before = records();
  EXPECT_EQ(reload(list), 0U);
  EXPECT_THAT(before, SizeIs(500));
  EXPECT_EQ(records(), before);
}

TEST_F(SectionedFile, FileOfAnotherProcessIsReloaded) {
  fill(300);
  save();
  write({{element_of(*basic_event(9000))}});
  EXPECT_EQ(reload(list), 0U);
  EXPECT_THAT(ids(list), ElementsAre(9000));
}

TEST_F(SectionedFile, ReloadDropsWhatWasNotSaved) {
  fill(500);
  save();
  const auto expected = contents(list);
  add(basic_event(9999));
  add(basic_event(-5));
  ++find_object(list->tree, 250)->event->rating;
  take_object(list->tree, 400);
  ASSERT_EQ(load(), 0U);
  EXPECT_EQ(contents(list), expected);
}

TEST_F(SectionedFile, ReloadBringsTheTextsAsTheyWereRead) {
  fill(3);
  add(basic_event(4, "twee\r\nregels"));  // a reader joins both into one line feed
  const OwnedEvent unknown = basic_event(5);
  unknown->sCat = -1;  // a reader derives it from the tags
  add(unknown);
  save();
  ASSERT_EQ(load(), 0U);
  EXPECT_EQ(contents(list), read_in_one_go());
  save();
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, ReloadTestsBadWordsAndCountsAnew) {
  fill(10);
  add(basic_event(11, "een lelijk woord"));
  core->config->prevCheck = 0;
  save();
  ASSERT_EQ(load(), 0U);
  EXPECT_EQ(counted(), 11);
  core->config->badword = g_slist_prepend(nullptr, zox_string_new("LELIJK"));
  ASSERT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), SizeIs(10));
  EXPECT_EQ(counted(), 11);
}

TEST_F(SectionedFile, PostingsWithTheSameIdAreAsInOneGo) {
  write({{element_of(*basic_event(5, "eerste")) + element_of(*basic_event(3, "lager"))},
         {element_of(*basic_event(5, "tweede"))}});
  const auto expected = read_in_one_go();
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(load(), 0U);
    EXPECT_EQ(contents(list), expected);
  }
  EXPECT_THAT(held(5), HasSubstr("tweede"));
  save();
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, WarningsComeInTheOrderOfTheFile) {
  const std::string twice =
      "<Event><PostID>1</PostID><Tags>|a1|</Tags><Tags>|a2|</Tags><Poster>p</Poster></Event>";
  const std::string groups =
      "<Event><PostID>2</PostID><Groups>1</Groups><Groups>2</Groups><Poster>p</Poster></Event>";
  write({{twice}, {groups}, {groups + twice}});
  const test::LogCapture log;
  ASSERT_EQ(load(), 0U);
  EXPECT_THAT(log.warnings(), ElementsAre("WARNING! event->tags was already filled!",
                                          "WARNING! event->groups was already filled!",
                                          "WARNING! event->groups was already filled!",
                                          "WARNING! event->tags was already filled!"));
}

TEST_F(SectionedFile, TextThatIsNotAsWeWriteItIsWrittenAnew) {
  const OwnedEvent event = basic_event(1);
  // The text has an element more than a save would write.
  std::string text = element_of(*event);
  text.insert(text.find("    <Stamp>"), "    <Stamp>5</Stamp>\n");
  write({{text, no_digest}});
  ASSERT_EQ(load(), 0U);
  save();
  EXPECT_EQ(test::read_gzip(cache()), saved_from_scratch());
}

TEST_F(SectionedFile, SectionThatDoesNotEndAPostingIsReadInOneGo) {
  const std::string element = element_of(*basic_event(1));
  write({{element.substr(0, 50)}, {element.substr(50)}});
  ASSERT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), ElementsAre(1));
}

TEST_F(SectionedFile, TableThatTellsOfOtherSizesIsDoneWithout) {
  std::string file = test::sectioned_file({{element_of(*basic_event(1))}});
  test::write_file(cache(), file + "x");
  load();
  EXPECT_THAT(ids(list), ElementsAre(1));
  const PostsLayout layout = test::layout_of(file);
  PostsLayout other = layout;
  ++other.sections[0].text_size;
  test::write_file(cache(), encode_header(other) + file.substr(header_size(1)));
  EXPECT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), ElementsAre(1));
}

TEST_F(SectionedFile, PostingThatNoReaderTakesSpoilsNoOther) {
  const test::LogCapture log;
  fill(400);
  const OwnedEvent large = basic_event(200);
  for (int item = 0; item < 12; ++item)
    large->groups =
        g_slist_prepend(large->groups, test::zox(std::string(1'000'000, '1')).release());
  add(large);
  save();
  EXPECT_THAT(log.warnings(), ElementsAre("zox_events_xml_add_basic(): posting 200 kan niet "
                                          "geschreven worden: Groups\n"));
  ASSERT_EQ(load(), 0U);
  EXPECT_THAT(ids(list), SizeIs(399));
}

TEST_F(SectionedFile, ListOfPostingsThatCannotBeWrittenIsAnEmptyDocument) {
  const test::LogCapture log;
  add(basic_event(1, "caf\xe9"));
  save();
  EXPECT_EQ(test::read_gzip(cache()), "<?xml version=\"1.0\"?>\n<Events/>\n");
}

}  // namespace
}  // namespace velkor
