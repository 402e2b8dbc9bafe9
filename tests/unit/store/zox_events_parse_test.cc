/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_parse.h>

#include <algorithm>
#include <string_view>

#include <gmock/gmock.h>
#include <sys/mman.h>
#include <unistd.h>

#include <velkor/zox_category.h>
#include <velkor/zox_string.h>

#include "store/event_table.h"
#include "store/event_walk.h"
#include "support/descriptor.h"
#include "support/slist.h"
#include "tests/support/filter_fixture.h"
#include "tests/support/log_capture.h"
#include "tests/unit/posting/event_samples.h"
#include "tests/unit/store/reading.h"

namespace velkor {
namespace {

using test::document_of;
using test::event_element;
using test::posting_element;
using test::read_events;
using testing::HasSubstr;
using testing::StartsWith;

class ZoxEventsParse : public test::FilterTest {
protected:
  ZoxEventsParse() { keep({0, 1, 2, 3}); }
  ~ZoxEventsParse() override {
    for_each_object(table.get(), [](gpointer, ZOXEventObject *object) { g_object_unref(object); });
  }

  ZoxErrorCode read_into_table(std::string_view document) {
    GHashTable *place = table.get();
    return zox_events_parse(test::zox(document).get(), &place, nullptr, nullptr, 1);
  }

  static gint32 counter(gint32 category) { return zox_category_get_parent(category)->count; }

  EventTable table{new_event_table()};
};

TEST_F(ZoxEventsParse, ReadsEveryPosting) {
  const auto reading = read_events(document_of({posting_element(1), posting_element(2)}));
  EXPECT_EQ(reading.code, 0U);
  EXPECT_EQ(reading.error, std::nullopt);
  EXPECT_THAT(reading.postings, testing::ElementsAre(test::describe(*test::basic_event(1)),
                                                     test::describe(*test::basic_event(2))));
}

TEST_F(ZoxEventsParse, ListIsInReverseOrder) {
  const OwnedString text = test::zox(document_of({posting_element(1), posting_element(2)}));
  GSList *list = nullptr;
  EXPECT_EQ(zox_events_parse(text.get(), nullptr, &list, nullptr, 1), 0U);
  std::vector<gint32> ids;
  for (ZOXEventObject *object : Items<ZOXEventObject>(list)) {
    ids.push_back(object->event->postId);
    g_object_unref(object);
  }
  g_slist_free(list);
  EXPECT_THAT(ids, testing::ElementsAre(2, 1));
}

TEST_F(ZoxEventsParse, ListGrowsAtItsFront) {
  GSList *list = nullptr;
  for (const gint32 id : {1, 2}) {
    const OwnedString text = test::zox(document_of({posting_element(id)}));
    EXPECT_EQ(zox_events_parse(text.get(), nullptr, &list, nullptr, 1), 0U);
  }
  ASSERT_EQ(g_slist_length(list), 2U);
  EXPECT_EQ(static_cast<ZOXEventObject *>(list->data)->event->postId, 2);
  g_slist_free_full(list, g_object_unref);
}

TEST_F(ZoxEventsParse, TableIsKeyedByPostId) {
  EXPECT_EQ(read_into_table(document_of({posting_element(5), event_element("<Poster>p</Poster>")})),
            0U);
  EXPECT_EQ(g_hash_table_size(table.get()), 2U);
  EXPECT_EQ(find_object(table.get(), 5)->event->postId, 5);
  EXPECT_NE(find_object(table.get(), -1), nullptr);
}

TEST_F(ZoxEventsParse, LaterPostingReplacesTheEarlierOneInTheTable) {
  EXPECT_EQ(read_into_table(
                document_of({posting_element(5), posting_element(5, "<Title>de latere</Title>")})),
            0U);
  ASSERT_EQ(g_hash_table_size(table.get()), 1U);
  EXPECT_STREQ(find_object(table.get(), 5)->event->title->str, "de latere");
  EXPECT_EQ(read_into_table(document_of({posting_element(5, "<Title>nog later</Title>")})), 0U);
  EXPECT_STREQ(find_object(table.get(), 5)->event->title->str, "nog later");
}

TEST_F(ZoxEventsParse, NamesOfRootAndPostingsCountRegardlessOfCase) {
  EXPECT_EQ(read_events("<events><EVENT><PostID>1</PostID></EVENT></events>").postings.size(), 1U);
}

TEST_F(ZoxEventsParse, CodeIsIgnored) {
  EXPECT_EQ(read_events("<Events><Event Code='99'/><Event/></Events>").postings.size(), 2U);
}

TEST_F(ZoxEventsParse, OtherChildrenAddNothing) {
  for (const char *text : {"<Events><Posting/>text<!-- c --></Events>", "<Events> </Events>",
                           "<Events><!-- c --></Events>", "<Events><?p i?></Events>",
                           "<Events><![CDATA[]]></Events>"}) {
    const auto reading = read_events(text);
    EXPECT_EQ(reading.code, 0U) << text;
    EXPECT_TRUE(reading.postings.empty());
    EXPECT_EQ(reading.error, std::nullopt);
  }
}

TEST_F(ZoxEventsParse, WrongRootIsRefused) {
  const auto reading = read_events(test::fixture("wrong-root.xml"));
  EXPECT_EQ(reading.code, 11U);
  EXPECT_EQ(reading.error, "zox_events_parse(): document of the wrong type, root node != Events");
  EXPECT_TRUE(reading.postings.empty());
}

TEST_F(ZoxEventsParse, RootWithoutChildrenIsRefused) {
  for (const char *text : {"<Events/>", "<Events></Events>"}) {
    const auto reading = read_events(text);
    EXPECT_EQ(reading.code, 11U);
    EXPECT_EQ(reading.error, "zox_events_parse(): no children of root-node!");
  }
}

TEST_F(ZoxEventsParse, EmptyTextIsRefusedWithoutAMessage) {
  const auto reading = read_events("");
  EXPECT_EQ(reading.code, 11U);
  EXPECT_EQ(reading.error, std::nullopt);
}

TEST_F(ZoxEventsParse, DiagnosisIsJoinedByBlanks) {
  const auto reading = read_events("<Events><Event></Events>");
  EXPECT_EQ(reading.code, 11U);
  ASSERT_TRUE(reading.error);
  EXPECT_THAT(*reading.error,
              StartsWith("Entity: line 1:  parser  error :  Opening and ending tag mismatch: "
                         "Event line 1 and Events\n"));
}

TEST_F(ZoxEventsParse, DiagnosisIsThatOfOneDocument) {
  const auto first = read_events("<Events><Event></Events>");
  EXPECT_EQ(read_events("<Events><Event></Events>").error, first.error);
  EXPECT_EQ(read_events("<Events/>").error, "zox_events_parse(): no children of root-node!");
}

TEST_F(ZoxEventsParse, DiagnosisStaysBounded) {
  std::string text = "<Events>";
  for (int fault = 0; fault < 20000; ++fault)
    text += "&nietbekend;";
  const auto reading = read_events(text + "</Events>");
  EXPECT_EQ(reading.code, 11U);
  EXPECT_LT(reading.error.value().size(), 2U << 20);
}

TEST_F(ZoxEventsParse, MessageIsOptional) {
  GSList *list = nullptr;
  EXPECT_EQ(zox_events_parse(test::zox("<a/>").get(), nullptr, &list, nullptr, 1), 11U);
}

TEST_F(ZoxEventsParse, MessageIsClearedOnSuccess) {
  char marker = 'x';
  char *error = &marker;
  GSList *list = nullptr;
  EXPECT_EQ(zox_events_parse(test::zox("<Events> </Events>").get(), nullptr, &list, &error, 1), 0U);
  EXPECT_EQ(error, nullptr);
}

TEST_F(ZoxEventsParse, UnusableDocumentIsPrintedUnlessQuiet) {
  GSList *list = nullptr;
  testing::internal::CaptureStdout();
  EXPECT_EQ(zox_events_parse(test::zox("<a/>").get(), nullptr, &list, nullptr, 0), 11U);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "zox_events_parse(): buffer = \n<a/>\n");
  testing::internal::CaptureStdout();
  EXPECT_EQ(zox_events_parse(test::zox("<a/>").get(), nullptr, &list, nullptr, 1), 11U);
  EXPECT_EQ(zox_events_parse(test::zox("<Events> </Events>").get(), nullptr, &list, nullptr, 0),
            0U);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

/** A text of more than 2 GiB in a few MiB of memory: the blanks in its middle are the same ones. */
class LargeDocument {
public:
  LargeDocument(std::string_view begin, std::string_view end)
      : file_(memfd_create("blanks", MFD_CLOEXEC)),
        bytes_(static_cast<char *>(
            mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    EXPECT_EQ(ftruncate(file_.get(), block), 0);
    for (std::size_t place = 0; place < size; place += block)
      mmap(bytes_ + place, block, PROT_READ | PROT_WRITE,
           MAP_FIXED | (place == 0 || place + block == size ? MAP_PRIVATE : MAP_SHARED),
           file_.get(), 0);
    std::fill_n(bytes_ + block, block, ' ');
    begin.copy(bytes_, begin.size());
    end.copy(bytes_ + size - end.size(), end.size());
  }
  ~LargeDocument() { munmap(bytes_, size); }
  LargeDocument(const LargeDocument &) = delete;
  LargeDocument &operator=(const LargeDocument &) = delete;

  [[nodiscard]] GString text() const { return {bytes_, size, size + 1}; }

private:
  static constexpr std::size_t block = std::size_t{16} << 20;
  static constexpr std::size_t size = 129 * block;

  Descriptor file_;
  char *bytes_;
};

TEST_F(ZoxEventsParse, DocumentBeyondTwoGibibytesIsReadToItsEnd) {
  const LargeDocument document("<Events>", "<Event><PostID>7</PostID></Event></Events>");
  const GString text = document.text();
  GSList *list = nullptr;
  EXPECT_EQ(zox_events_parse(&text, nullptr, &list, nullptr, 1), 0U);
  ASSERT_EQ(g_slist_length(list), 1U);
  EXPECT_EQ(static_cast<ZOXEventObject *>(list->data)->event->postId, 7);
  g_slist_free_full(list, g_object_unref);
}

TEST_F(ZoxEventsParse, UnusableDocumentContributesNothing) {
  const auto text = document_of({posting_element(1), posting_element(2)}) + "<";
  EXPECT_TRUE(read_events(text).postings.empty());
  EXPECT_EQ(read_into_table(text), 11U);
  EXPECT_EQ(g_hash_table_size(table.get()), 0U);
  EXPECT_EQ(counter(0), 0);
}

TEST_F(ZoxEventsParse, NewPostingsAreCounted) {
  core->config->prevCheck = 1000;
  EXPECT_EQ(read_into_table(document_of({
                event_element("<PostID>1</PostID><Stamp>1000</Stamp><Cat>0</Cat>"),
                event_element("<PostID>2</PostID><Stamp>999</Stamp><Cat>0</Cat>"),
                event_element("<PostID>3</PostID><Stamp>1001</Stamp><Cat>1</Cat>"),
            })),
            0U);
  EXPECT_EQ(counter(0), 1);
  EXPECT_EQ(counter(1), 1);
}

TEST_F(ZoxEventsParse, FirstNewPostingOfADocumentResetsTheCounters) {
  zox_category_get_parent(2)->count = 5;
  core->config->prevCheck = 1000;
  EXPECT_EQ(read_into_table("<Events><Event><Stamp>999</Stamp><Cat>0</Cat></Event></Events>"), 0U);
  EXPECT_EQ(counter(2), 5);
  EXPECT_EQ(read_into_table("<Events><Event><Stamp>1000</Stamp><Cat>0</Cat></Event></Events>"), 0U);
  EXPECT_EQ(counter(2), 0);
  EXPECT_EQ(counter(0), 1);
}

TEST_F(ZoxEventsParse, BadWordsInTheTitleDropThePosting) {
  core->config->badword = g_slist_append(core->config->badword, zox_string_new("niet"));
  core->config->badword = g_slist_append(core->config->badword, zox_string_new("xxx"));
  const auto title = [](const char *text) {
    return "<Stamp>5</Stamp><Cat>0</Cat><Title>" + std::string(text) + "</Title>";
  };
  const auto reading = read_events(document_of({
      event_element(title("Big XXX Show")),
      event_element(title("Big XX Show")),
      event_element("<Status>-2</Status>" + title("Big XXX Show")),
      event_element("<Status>-3</Status>" + title("xxx")),
      event_element("<Stamp>5</Stamp><Cat>0</Cat>"),
  }));
  EXPECT_EQ(reading.code, 0U);
  ASSERT_EQ(reading.postings.size(), 4U);
  EXPECT_THAT(reading.postings[0], HasSubstr("[Big XX Show]"));
  EXPECT_THAT(reading.postings[1], HasSubstr("status=-2"));
  EXPECT_THAT(reading.postings[2], HasSubstr("status=-3"));
  EXPECT_THAT(reading.postings[3], HasSubstr("title=none"));
  EXPECT_EQ(counter(0), 5);  // counted before the words are looked for
}

TEST_F(ZoxEventsParse, EmptyBadWordIsFoundInEveryTitle) {
  core->config->badword = g_slist_append(nullptr, zox_string_new(""));
  EXPECT_TRUE(read_events(document_of({posting_element(1)})).postings.empty());
}

TEST_F(ZoxEventsParse, OddListsAreToldWhenThePostingIsTakenOver) {
  const test::LogCapture log;
  const std::string twice = event_element("<Groups>|1|</Groups><Groups>|2|</Groups>"
                                          "<Tags>|a|</Tags><Tags>|b|</Tags>");
  EXPECT_EQ(read_events(document_of({twice}) + "<").code, 11U);
  EXPECT_TRUE(log.warnings().empty());
  EXPECT_EQ(read_events(document_of({twice})).code, 0U);
  EXPECT_THAT(log.warnings(), testing::ElementsAre("WARNING! event->groups was already filled!",
                                                   "WARNING! event->tags was already filled!"));
}

TEST_F(ZoxEventsParse, ListWithoutTextIsPassedOverWhenTolerant) {
  const test::LogCapture log;
  zox_set_tolerant(1);
  const auto reading = read_events(document_of({
      posting_element(1),
      event_element("<PostID>2</PostID><Stamp>1</Stamp><Cat>0</Cat><Groups/>"),
      posting_element(3),
  }));
  zox_set_tolerant(0);
  EXPECT_EQ(reading.code, 0U);
  EXPECT_EQ(reading.postings.size(), 2U);
  EXPECT_EQ(counter(0), 2);
  EXPECT_THAT(log.warnings(),
              testing::ElementsAre(
                  "zox_events_parse(): posting 2: no text in the list of groups, passed over\n"));
}

TEST_F(ZoxEventsParse, ListWithoutTextMattersOnlyInAUsableDocument) {
  EXPECT_EQ(read_events("<Events><Event><Tags/></Event>").code, 11U);
}

using ZoxEventsParseDeathTest = ZoxEventsParse;

TEST_F(ZoxEventsParseDeathTest, ListWithoutTextIsAnError) {
  EXPECT_DEATH(read_events("<Events><Event><Tags/></Event></Events>"),
               "zox_events_parse_event: assertion failed: \\(tmp\\)");
}

TEST_F(ZoxEventsParseDeathTest, BadWordsAreNeverNull) {
  core->config->badword = g_slist_append(nullptr, nullptr);
  EXPECT_DEATH(read_events(document_of({posting_element(1)})),
               "zox_events_parse: assertion failed: \\(badword\\)");
  core->config->badword = g_slist_delete_link(core->config->badword, core->config->badword);
}

TEST_F(ZoxEventsParseDeathTest, ExactlyOneTargetIsGiven) {
  const OwnedString text = test::zox("<Events> </Events>");
  GHashTable *place = table.get();
  GSList *list = nullptr;
  EXPECT_DEATH(zox_events_parse(text.get(), nullptr, nullptr, nullptr, 1),
               "ret_tree == NULL && ret_list == NULL");
  EXPECT_DEATH(zox_events_parse(text.get(), &place, &list, nullptr, 1),
               "ret_tree != NULL && ret_list != NULL");
  place = nullptr;
  EXPECT_DEATH(zox_events_parse(text.get(), &place, nullptr, nullptr, 1),
               "assertion failed: \\(\\*ret_tree\\)");
}

TEST_F(ZoxEventsParseDeathTest, NeedsCoreAndBuffer) {
  GSList *list = nullptr;
  EXPECT_DEATH(zox_events_parse(nullptr, nullptr, &list, nullptr, 1),
               "assertion failed: \\(buffer\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_events_parse(nullptr, nullptr, &list, nullptr, 1);
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
