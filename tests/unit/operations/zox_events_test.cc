/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The update from the server. */
#include <velkor/zox_events.h>

#include <gmock/gmock.h>

#include <velkor/zox_config.h>
#include <velkor/zox_file.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>
#include <velkor/zox_update_result.h>

#include "tests/support/filter_fixture.h"
#include "tests/support/fresh_process.h"
#include "tests/support/layer_fixtures.h"
#include "tests/support/log_capture.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor {
namespace {

using test::document_of;
using test::ids;
using test::posting_element;
using test::StubReply;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/** What the callbacks of one update received. */
struct Followed {
  std::vector<std::string> steps;
};

Followed *followed = nullptr;

gint note_progress(gint32 total, gint32 index) {
  followed->steps.push_back("dump " + std::to_string(index) + "/" + std::to_string(total));
  return 0;
}

gint note_merge(guint32 total, guint32 done, gpointer data) {
  static_cast<Followed *>(data)->steps.push_back("merge " + std::to_string(done) + "/" +
                                                 std::to_string(total));
  return 0;
}

gint note_done(gpointer data) {
  static_cast<Followed *>(data)->steps.push_back(
      "done " + std::to_string(zox_eventlist_get_count(core->eventlist, 0)));
  return 0;
}

std::string available(gint64 stamp, const std::string &chunks) {
  return "<Events><Event Code='0'><Stamp>" + std::to_string(stamp) + "</Stamp></Event>" +
         (chunks.empty() ? "" : "<Event Code='7'><Chunks>" + chunks + "</Chunks></Event>") +
         "</Events>";
}

/** The text as a gzip file. */
std::string squeezed(const std::string &text) {
  const test::TemporaryDirectory directory;
  test::write_gzip(directory.path() / "dump", text);
  return test::read_file(directory.path() / "dump");
}

/** A posting of yesterday, which no clean-up removes. */
std::string recent_posting(gint32 postId, std::string_view more = {}) {
  return posting_element(postId, "<Stamp>" + std::to_string(test::days_ago(1)) + "</Stamp>" +
                                     std::string(more));
}

/** Where downloads go. GLib looks for the directory once a process, hence so early. */
class DownloadDirectory {
public:
  DownloadDirectory() {
    const test::EnvironmentVariable variable("TMPDIR", directory_.path());
    g_get_tmp_dir();
  }
  [[nodiscard]] bool is_empty() const { return std::filesystem::is_empty(directory_.path()); }

private:
  test::TemporaryDirectory directory_;
};

const DownloadDirectory downloads;

class ZoxEventsFetch : public test::LibraryServerTest {
protected:
  ZoxEventsFetch() {
    followed = &calls;
    core->filterlist = zox_filterlist_new();
    zox_categories_init();
    core->eventlist = zox_eventlist_new();
    core->config->lastCheck = 1000;
    core->config->prevCheck = 500;
  }
  ~ZoxEventsFetch() override { followed = nullptr; }

  void offer(const std::string &name, const std::string &document) {
    server.reply("/3.7.3/dumps/" + name + ".gz", squeezed(document));
  }

  void available_are(const std::string &reply) { server.reply("/3.7.3/xml.php", reply); }

  ZoxErrorCode update() {
    char *text = nullptr;
    const ZoxErrorCode code = zox_events_fetch(note_progress, note_merge, note_done, &text, &calls);
    const OwnedText owned(text);
    message = text == nullptr ? "none" : text;
    return code;
  }

  /** A list with one posting that is also in the cache. */
  void keep_one_posting() {
    const OwnedEvent event = test::basic_event(1);
    event->stamp = test::days_ago(1);
    zox_eventlist_add_or_replace_event(core->eventlist, event.get());
    ASSERT_EQ(zox_eventlist_save(core->eventlist), 1);
  }

  /** What must hold after every failure: nothing is lost, and the next update asks the same. */
  void expect_unchanged() {
    EXPECT_EQ(core->config->lastCheck, 1000);
    EXPECT_EQ(core->config->prevCheck, 500);
    EXPECT_THAT(ids(core->eventlist), ElementsAre(1));
    EXPECT_THAT(calls.steps, testing::Not(testing::Contains(HasSubstr("done"))));
    EXPECT_EQ(zox_eventlist_load(core->eventlist, nullptr), 0U);
    EXPECT_THAT(ids(core->eventlist), ElementsAre(1));
    EXPECT_TRUE(downloads.is_empty());
  }

  [[nodiscard]] std::vector<std::string> asked_since() const {
    std::vector<std::string> stamps;
    for (const auto &request : server.requests("/3.7.3/xml.php"))
      stamps.push_back(request.parameter("lc"));
    return stamps;
  }

  Followed calls;
  std::string message;
};

/** The ids of one group of the latest update's result. */
std::vector<gint32> changed(ZoxUpdateGroup group) {
  const std::unique_ptr<ZoxUpdateResult, ReleaseWith<zox_update_result_unref>> result(
      zox_events_last_result());
  guint32 count = 77;
  const gint32 *found = zox_update_result_ids(result.get(), group, &count);
  EXPECT_EQ(found == nullptr, count == 0);
  return {found, found + count};
}

std::string watcher_of_hit(guint32 index) {
  const std::unique_ptr<ZoxUpdateResult, ReleaseWith<zox_update_result_unref>> result(
      zox_events_last_result());
  const char *text = zox_update_result_watcher(result.get(), index);
  return text == nullptr ? "(null)" : text;
}

TEST_F(ZoxEventsFetch, TellsWhatChanged) {
  keep_one_posting();
  const OwnedEvent old = test::basic_event(9);
  old->stamp = 1;
  zox_eventlist_add_or_replace_event(core->eventlist, old.get());
  core->config->watchlist = g_slist_append(nullptr, zox_string_new("1"));
  core->config->watcher = g_slist_append(nullptr, zox_string_new("boot"));
  core->config->watcher = g_slist_append(core->config->watcher, zox_string_new("FIETS"));
  zox_filterlist_append_filter(core->filterlist, test::filter_of(0).get());
  zox_categories_init();
  available_are(available(2000, "een|twee"));
  offer("een", document_of({recent_posting(7, "<Cat>0</Cat><Title>auto</Title>"),
                            recent_posting(1, "<Cat>0</Cat><Title>nieuwe titel</Title>"),
                            recent_posting(3, "<Status>-2</Status>")}));
  offer("twee", document_of({recent_posting(7, "<Cat>0</Cat><Title>rode fiets</Title>"),
                             recent_posting(5, "<Cat>0</Cat><Title>bootje</Title>")}));
  EXPECT_EQ(update(), ZOX_RESULT_SUCCESS);
  EXPECT_THAT(changed(ZOX_UPDATE_NEW), ElementsAre(5, 7));
  EXPECT_THAT(changed(ZOX_UPDATE_CHANGED), ElementsAre(1));
  EXPECT_THAT(changed(ZOX_UPDATE_REMOVED), ElementsAre(3));
  EXPECT_THAT(changed(ZOX_UPDATE_AGED_OUT), ElementsAre(9));
  EXPECT_THAT(changed(ZOX_UPDATE_WATCHED), ElementsAre(1));
  EXPECT_THAT(changed(ZOX_UPDATE_WATCHER_HIT), ElementsAre(5, 7));
  EXPECT_EQ(watcher_of_hit(0), "boot");
  EXPECT_EQ(watcher_of_hit(1), "FIETS");
  EXPECT_EQ(watcher_of_hit(2), "(null)");
}

TEST_F(ZoxEventsFetch, TellsThatNothingChanged) {
  keep_one_posting();
  available_are(available(2000, ""));
  EXPECT_EQ(update(), ZOX_RESULT_NOTHING_NEW);
  for (const ZoxUpdateGroup group : {ZOX_UPDATE_NEW, ZOX_UPDATE_CHANGED, ZOX_UPDATE_AGED_OUT})
    EXPECT_THAT(changed(group), IsEmpty());
}

TEST_F(ZoxEventsFetch, BringsTheListUpToDate) {
  keep_one_posting();
  available_are(available(2000, "een|twee"));
  offer("een", document_of({recent_posting(2), recent_posting(3)}));
  offer("twee", document_of({recent_posting(4)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(message, "none");
  EXPECT_THAT(ids(core->eventlist), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(core->config->lastCheck, 2000);
  EXPECT_EQ(core->config->prevCheck, 1000);
  EXPECT_THAT(calls.steps,
              ElementsAre("dump 0/0", "dump 1/2", "dump 2/2", "merge 3/3", "done 4", "done 4"));
  EXPECT_TRUE(downloads.is_empty());
}

TEST_F(ZoxEventsFetch, SavesListSettingsAndNewsgroups) {
  available_are("<Events><Event Code='0'><Stamp>2000</Stamp></Event>"
                "<Event Code='4'><GroupID>12</GroupID><Name>alt.binaries.tv</Name></Event>"
                "<Event Code='7'><Chunks>een</Chunks></Event></Events>");
  offer("een", document_of({recent_posting(2)}));
  EXPECT_EQ(update(), 0U);
  zox_config_load();
  EXPECT_EQ(core->config->lastCheck, 2000);
  EXPECT_EQ(core->config->prevCheck, 1000);
  EXPECT_THAT(test::read_gzip(cache_file("velkor.groups.gz")), HasSubstr("alt.binaries.tv"));
  EXPECT_THAT(test::read_gzip(cache_file("velkor.posts.gz")), HasSubstr("<PostID>2</PostID>"));
}

TEST_F(ZoxEventsFetch, LoadsWhatItSaved) {
  available_are(available(2000, "een"));
  // The third one is merged, but a posting that was deleted so long ago is not saved.
  offer("een", document_of({recent_posting(2), recent_posting(3),
                            recent_posting(4, "<Status>-2</Status><Updated>1</Updated>")}));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(calls.steps, ElementsAre("dump 0/0", "dump 1/1", "merge 3/3", "done 3", "done 2"));
  EXPECT_THAT(ids(core->eventlist), ElementsAre(2, 3));
}

TEST_F(ZoxEventsFetch, AsksOnceUnlessRecursive) {
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(asked_since(), ElementsAre("1000"));
}

TEST_F(ZoxEventsFetch, RecursiveAsksUntilNoDumpIsAdded) {
  core->config->recursiveUpdate = 1;
  server.reply_once("/3.7.3/xml.php", available(2000, "een|twee"));
  server.reply_once("/3.7.3/xml.php", available(3000, "drie"));
  server.reply_once("/3.7.3/xml.php", available(4000, ""));
  for (const auto &[name, id] : {std::pair("een", 1), std::pair("twee", 2), std::pair("drie", 3)})
    offer(name, document_of({recent_posting(id)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(asked_since(), ElementsAre("1000", "2000", "3000"));
  EXPECT_THAT(ids(core->eventlist), ElementsAre(1, 2, 3));
  EXPECT_EQ(core->config->lastCheck, 4000);
  EXPECT_THAT(calls.steps, testing::Contains("dump 3/3"));
}

TEST_F(ZoxEventsFetch, RecursiveStopsWhenTheSameAnswerComesAgain) {
  core->config->recursiveUpdate = 1;
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(1)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(asked_since(), ElementsAre("1000", "2000"));
  EXPECT_EQ(core->config->lastCheck, 2000);
  EXPECT_THAT(ids(core->eventlist), ElementsAre(1));
}

TEST_F(ZoxEventsFetch, RecursiveGoesOnWhileTheStampMoves) {
  core->config->recursiveUpdate = 1;
  for (const gint64 stamp : {2000, 3000, 4000})
    server.reply_once("/3.7.3/xml.php", available(stamp, "een"));
  server.reply_once("/3.7.3/xml.php", available(5000, ""));
  offer("een", document_of({recent_posting(1)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(asked_since(), ElementsAre("1000", "2000", "3000", "4000"));
  EXPECT_EQ(core->config->lastCheck, 5000);
}

TEST_F(ZoxEventsFetch, RecursiveEndsWhenNamesComeWithoutEnd) {
  keep_one_posting();
  core->config->recursiveUpdate = 1;
  for (int number = 1; number <= 1001; ++number)
    server.reply_once("/3.7.3/xml.php", available(1000, "c" + std::to_string(number)));
  EXPECT_EQ(update(), 11U);
  EXPECT_EQ(message, "zox_events_fetch(): names of dumps still come after 1000 questions");
  EXPECT_EQ(asked_since().size(), 1000U);
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, RecursiveEndsWhenTooManyNamesCome) {
  keep_one_posting();
  core->config->recursiveUpdate = 1;
  for (const gint64 stamp : {2000, 3000, 4000})
    server.reply_once("/3.7.3/xml.php", available(stamp, std::string(29'999, '|')));
  EXPECT_EQ(update(), 11U);
  EXPECT_EQ(message, "zox_events_fetch(): more than 50000 names of dumps");
  EXPECT_THAT(asked_since(), ElementsAre("1000", "2000"));
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, RefusesADumpOfMorePostingsThanAnyHas) {
  keep_one_posting();
  available_are(available(2000, "een"));
  std::string dump = "<Events>";
  for (int number = 0; number <= 1'000'000; ++number)
    dump += "<Event/>";
  offer("een", dump + "</Events>");
  EXPECT_EQ(update(), 11U);
  EXPECT_THAT(message, HasSubstr("Document of too many postings"));
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, KeepsItsTimesWhenTheServersStampIsNone) {
  keep_one_posting();
  offer("een", document_of({recent_posting(2)}));
  for (const gint64 stamp :
       {gint64{G_MAXINT32}, gint64{G_MININT32}, gint64{-1}, gint64{G_MAXUINT32}}) {
    const test::LogCapture log;
    available_are(available(stamp, "een"));
    EXPECT_EQ(update(), 0U);
    EXPECT_THAT(ids(core->eventlist), ElementsAre(1, 2));
    zox_config_load();
    EXPECT_EQ(core->config->lastCheck, 1000);
    EXPECT_EQ(core->config->prevCheck, 500);
    EXPECT_THAT(log.warnings(),
                ElementsAre(HasSubstr(" is geen bruikbare tijd van de server; lastCheck en "
                                      "prevCheck blijven gelijk")));
  }
}

TEST_F(ZoxEventsFetch, TakesTheLargestStampThatIsATime) {
  available_are(available(G_MAXINT32 - 1, "een"));
  offer("een", document_of({recent_posting(2)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(core->config->lastCheck, G_MAXINT32 - 1);
  EXPECT_EQ(core->config->prevCheck, 1000);
}

TEST_F(ZoxEventsFetch, RecursiveFailureReloadsTheList) {
  keep_one_posting();
  zox_eventlist_add_or_replace_event(core->eventlist, test::event_in_state(9, 0, 0).get());
  core->config->verwijderPostsNaXDagen = 9;  // no clean-up, which would reload as well
  const test::LogCapture log;
  core->config->recursiveUpdate = 1;
  server.reply_once("/3.7.3/xml.php", available(2000, "een"));
  server.reply_once("/3.7.3/xml.php", "BAN");
  EXPECT_EQ(update(), 3U);
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, FailureOfTheOneQuestionDoesNotReload) {
  keep_one_posting();
  const OwnedEvent unsaved = test::basic_event(9);
  unsaved->stamp = test::days_ago(1);
  zox_eventlist_add_or_replace_event(core->eventlist, unsaved.get());
  available_are("BAN");
  EXPECT_EQ(update(), 3U);
  EXPECT_THAT(ids(core->eventlist), ElementsAre(1, 9));
}

TEST_F(ZoxEventsFetch, NothingAvailableIsNothingNew) {
  keep_one_posting();
  available_are(available(2000, ""));
  EXPECT_EQ(update(), 5U);
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, DumpsWithoutPostingsAreNothingNew) {
  keep_one_posting();
  available_are(available(2000, "een"));
  offer("een", "<Events><!-- leeg --></Events>");
  EXPECT_EQ(update(), 5U);
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, StampStaysWithoutANewOne) {
  available_are("<Events><Event Code='7'><Chunks>een</Chunks></Event></Events>");
  offer("een", document_of({recent_posting(2)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(core->config->lastCheck, 1000);
  EXPECT_EQ(core->config->prevCheck, 1000);
}

TEST_F(ZoxEventsFetch, FirstUpdateMergesWithoutReloading) {
  core->config->lastCheck = 0;
  const OwnedEvent unsaved = test::basic_event(9);
  unsaved->stamp = test::days_ago(1);
  zox_eventlist_add_or_replace_event(core->eventlist, unsaved.get());
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(ids(core->eventlist), ElementsAre(2, 9));
}

TEST_F(ZoxEventsFetch, LaterUpdateStartsFromTheCache) {
  keep_one_posting();
  const OwnedEvent unsaved = test::basic_event(9);
  unsaved->stamp = test::days_ago(1);
  zox_eventlist_add_or_replace_event(core->eventlist, unsaved.get());
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(ids(core->eventlist), ElementsAre(1, 2));
}

TEST_F(ZoxEventsFetch, CacheThatCannotBeReadIsNotReplaced) {
  keep_one_posting();
  std::filesystem::remove(cache_file("velkor.posts.gz"));
  std::filesystem::create_directory(cache_file("velkor.posts.gz"));
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  EXPECT_EQ(update(), 1U);
  EXPECT_EQ(core->config->lastCheck, 1000);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_UNREADABLE);
}

TEST_F(ZoxEventsFetch, StampsBeyond32BitsAreCutInTheQuestion) {
  core->config->lastCheck = (gint64{1} << 32) + 7;
  available_are(available(2000, ""));
  EXPECT_EQ(update(), 5U);
  EXPECT_THAT(asked_since(), ElementsAre("7"));
}

TEST_F(ZoxEventsFetch, CallbacksAreOptional) {
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  char *text = nullptr;
  EXPECT_EQ(zox_events_fetch(nullptr, nullptr, nullptr, &text, nullptr), 0U);
  EXPECT_EQ(text, nullptr);
  EXPECT_THAT(ids(core->eventlist), ElementsAre(2));
}

TEST_F(ZoxEventsFetch, OldPostingsAreRemovedFirst) {
  const OwnedEvent old = test::basic_event(8);
  old->stamp = test::days_ago(100);
  zox_eventlist_add_or_replace_event(core->eventlist, old.get());
  keep_one_posting();
  available_are(available(2000, ""));
  EXPECT_EQ(update(), 5U);
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, NamesOfDumpsNeverLeadToFiles) {
  keep_one_posting();
  available_are(available(2000, "../../../etc/passwd"));
  EXPECT_NE(update(), 0U);
  expect_unchanged();
}

TEST_F(ZoxEventsFetch, SettingsAreKeptWhenTheListCannotBeSaved) {
  keep_one_posting();
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  const test::LogCapture log;
  auto cache = cache_file("velkor.posts.gz");
  const auto put_a_directory_in_its_place = [](gpointer place) {
    const auto &path = *static_cast<std::filesystem::path *>(place);
    std::filesystem::remove_all(path);
    return std::filesystem::create_directory(path) ? 1 : 0;
  };
  char *text = nullptr;
  EXPECT_EQ(zox_events_fetch(nullptr, nullptr, put_a_directory_in_its_place, &text, &cache), 0U);
  EXPECT_THAT(ids(core->eventlist), testing::Contains(2));
  EXPECT_EQ(core->config->lastCheck, 1000);
  EXPECT_EQ(core->config->prevCheck, 500);
  EXPECT_THAT(log.warnings(),
              testing::Contains("zox_events_fetch(): de postings konden niet worden opgeslagen\n"));
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
  EXPECT_EQ(zox_file_last_error()->path, cache.string());
  EXPECT_TRUE(downloads.is_empty());
}

gint look_at_downloads(gint64 received, gint64 /*expected*/, gpointer lookings) {
  if (received > 0)
    static_cast<std::vector<bool> *>(lookings)->push_back(downloads.is_empty());
  return 0;
}

TEST_F(ZoxEventsFetch, DownloadHasNoNameThatAKilledProcessCouldLeave) {
  std::vector<bool> empty;
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  zox_http_set_transfer_callback(look_at_downloads, &empty);
  const ZoxErrorCode code = update();
  zox_http_set_transfer_callback(nullptr, nullptr);
  EXPECT_EQ(code, 0U);
  EXPECT_THAT(empty, testing::AllOf(testing::Not(IsEmpty()), testing::Each(true)));
}

/** Looks at the downloads whenever a message is logged. */
class DownloadsWhileLogging {
public:
  DownloadsWhileLogging() : earlier_(g_log_set_default_handler(look, this)) {}
  ~DownloadsWhileLogging() { g_log_set_default_handler(earlier_, nullptr); }
  DownloadsWhileLogging(const DownloadsWhileLogging &) = delete;
  DownloadsWhileLogging &operator=(const DownloadsWhileLogging &) = delete;

  std::vector<bool> empty;

private:
  static void look(const gchar *, GLogLevelFlags, const gchar *, gpointer self) {
    static_cast<DownloadsWhileLogging *>(self)->empty.push_back(downloads.is_empty());
  }

  GLogFunc earlier_;
};

TEST_F(ZoxEventsFetch, DownloadIsGoneBeforeItsTextIsRead) {
  available_are(available(2000, "een"));
  // The reader warns about further lists of newsgroups.
  offer("een", document_of({recent_posting(2, "<Groups>|1|</Groups><Groups>|2|</Groups>")}));
  const DownloadsWhileLogging log;
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(log.empty, testing::AllOf(testing::Not(IsEmpty()), testing::Each(true)));
}

TEST_F(ZoxEventsFetch, SettingsThatCannotBeSavedAreReported) {
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  const test::LogCapture log;
  std::filesystem::create_directory(cache_file("velkor.conf"));
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(ids(core->eventlist), ElementsAre(2));
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
  EXPECT_EQ(zox_file_last_error()->path, cache_file("velkor.conf").string());
}

gint save_elsewhere(gpointer) {
  const OwnedString text(zox_string_new(""));
  return zox_file_save("elders", text.get(), 0);
}

TEST_F(ZoxEventsFetch, OutcomeIsNotThatOfTheCallback) {
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  const test::LogCapture log;
  std::filesystem::create_directory(cache_file("elders"));
  char *text = nullptr;
  EXPECT_EQ(zox_events_fetch(nullptr, nullptr, save_elsewhere, &text, nullptr), 0U);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE);
}

TEST_F(ZoxEventsFetch, ACoreForReadingOnlyKeepsTheNewPostingsInMemory) {
  available_are(available(2000, "een"));
  offer("een", document_of({recent_posting(2)}));
  const test::LogCapture log;
  zox_eventlist_save(core->eventlist);
  const std::string before = test::read_file(cache_file("velkor.posts.gz"));
  read_only_from_now_on();
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(ids(core->eventlist), ElementsAre(2));
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_READ_ONLY);
  EXPECT_EQ(zox_file_last_error()->path, cache_file("velkor.posts.gz").string());
  EXPECT_EQ(test::read_file(cache_file("velkor.posts.gz")), before);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

/** A reply to the question, and what the update makes of it. */
struct Answer {
  std::string name;
  StubReply reply;
  ZoxErrorCode code;
  std::string message;
};

class FailedQuestion : public ZoxEventsFetch, public testing::WithParamInterface<Answer> {};

TEST_P(FailedQuestion, LeavesEverythingAsItWas) {
  for (const gint32 recursive : {0, 1}) {
    keep_one_posting();
    core->config->recursiveUpdate = recursive;
    server.reply("/3.7.3/xml.php", GetParam().reply);
    EXPECT_EQ(update(), GetParam().code);
    EXPECT_THAT(message, HasSubstr(GetParam().message));
    expect_unchanged();
  }
}

StubReply body(std::string text) {
  return {.body = std::move(text)};
}

template <typename Case>
std::string name_of(const testing::TestParamInfo<Case> &info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Answers, FailedQuestion,
    testing::Values(Answer{"Unauthorized", body("UNAUTH"), 2, "none"},
                    Answer{"Banned", body("BAN"), 3, "none"},
                    Answer{"Database", body("Could not connect to the database"), 4, "none"},
                    Answer{"UpdateRequired", body("UPD"), 27, "none"},
                    Answer{"Notice", body("MSGOnderhoud tot 12:00"), 29, "Onderhoud tot 12:00"},
                    Answer{"Empty", body(""), 13, "none"},
                    Answer{"Garbage", body("<html>"), 11, "Premature end of data"},
                    Answer{"WrongRoot", body("<a/>"), 11, "document of the wrong type"},
                    Answer{"NoChildren", body("<Events/>"), 11, "no children of root-node"},
                    Answer{"UnknownCode", body("<Events><Event Code='3'/></Events>"), 11,
                           "Unknown numcode 3"},
                    Answer{"Silent", {.close_at_once = true}, 1, "none"},
                    Answer{"BrokenOff", {.body = "<Events>", .send_only = 3}, 1, "none"}),
    name_of<Answer>);

TEST_F(ZoxEventsFetch, ServerThatIsNotThereLeavesEverythingAsItWas) {
  keep_one_posting();
  zox_http_set_hosts("127.0.0.1:1", "127.0.0.1:1");
  EXPECT_EQ(update(), 16U);
  EXPECT_EQ(message, "none");
  expect_unchanged();
}

class FailedDump : public ZoxEventsFetch, public testing::WithParamInterface<Answer> {};

TEST_P(FailedDump, LeavesEverythingAsItWas) {
  keep_one_posting();
  available_are(available(2000, "een|twee|drie"));
  offer("een", document_of({recent_posting(2)}));
  server.reply("/3.7.3/dumps/twee.gz", GetParam().reply);
  testing::internal::CaptureStdout();
  const ZoxErrorCode code = update();
  const std::string printed = testing::internal::GetCapturedStdout();
  EXPECT_EQ(code, GetParam().code);
  EXPECT_THAT(message, HasSubstr(GetParam().message));
  EXPECT_EQ(printed.find("zox_events_parse(): buffer = \n") == 0, code == 11) << printed;
  EXPECT_THAT(calls.steps, ElementsAre("dump 0/0", "dump 1/3", "dump 2/3"));
  EXPECT_THAT(server.requests("/3.7.3/dumps/drie.gz"), IsEmpty());
  expect_unchanged();
}

std::string without_end(std::string bytes) {
  bytes.resize(bytes.size() - 9);
  return bytes;
}

std::string damaged(std::string bytes) {
  bytes[bytes.size() - 6] = static_cast<char>(bytes[bytes.size() - 6] ^ 1);
  return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    Dumps, FailedDump,
    testing::Values(
        Answer{"Missing", {.status = 404, .body = "<html>404</html>"}, 11, "wrong type"},
        Answer{"Empty", body(""), 11, "none"}, Answer{"Silent", {.close_at_once = true}, 1, "none"},
        Answer{"BrokenOff", {.body = squeezed("<Events> </Events>"), .send_only = 12}, 1, "none"},
        Answer{"TruncatedGzip", body(without_end(squeezed("<Events> </Events>"))), 1, "none"},
        Answer{"DamagedGzip", body(damaged(squeezed("<Events> </Events>"))), 1, "none"},
        Answer{"NotWellFormed", body(squeezed("<Events>")), 11, "Premature end of data"},
        Answer{"WrongRoot", body(squeezed("<Groups/>")), 11, "document of the wrong type"},
        Answer{"NoChildren", body(squeezed("<Events/>")), 11, "no children of root-node"}),
    name_of<Answer>);

TEST_F(ZoxEventsFetch, QuestionAppendsToTheNames) {
  available_are(available(2000, "b|c"));
  GSList *names = g_slist_append(nullptr, g_strdup("a"));
  gint64 stamp = 5;
  char *text = nullptr;
  EXPECT_EQ(zox_events_fetch_get_available(&names, -3, &stamp, &text), 0U);
  EXPECT_EQ(stamp, 2000);
  EXPECT_EQ(text, nullptr);
  std::vector<std::string> found;
  for (const char *name : Items<const char>(names))
    found.emplace_back(name);
  EXPECT_THAT(found, ElementsAre("a", "b", "c"));
  g_slist_free_full(names, g_free);
  EXPECT_THAT(asked_since(), ElementsAre("-3"));
}

using ZoxEventsFetchDeathTest = ZoxEventsFetch;

TEST_F(ZoxEventsFetchDeathTest, NeedsCoreAndSettings) {
  const test::FreshProcess fresh(sandbox);
  char *text = nullptr;
  EXPECT_DEATH(
      {
        core->config = nullptr;
        zox_events_fetch(nullptr, nullptr, nullptr, &text, nullptr);
      },
      "assertion failed: \\(core->config\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_events_fetch(nullptr, nullptr, nullptr, &text, nullptr);
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
