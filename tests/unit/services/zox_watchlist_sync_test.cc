/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_watchlist.h>

#include <map>
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include <velkor/zox_eventlist.h>
#include <velkor/zox_file.h>
#include <velkor/zox_http_curl.h>

#include "tests/support/filter_fixture.h"
#include "tests/support/layer_fixtures.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

constexpr const char *path = "/3.7.3/xml-wlist.php";
constexpr const char *findpost_path = "/3.7.3/xml-findpost.php";

class ZoxWatchlistSync : public test::LibraryServerTest {
protected:
  ZoxWatchlistSync() {
    core->filterlist = zox_filterlist_new();
    zox_categories_init();
    core->eventlist = zox_eventlist_new();
  }

  ZoxErrorCode upload() { return zox_watchlist_upload(&place); }
  ZoxErrorCode upload(const char *reply) {
    server.reply(path, reply);
    return upload();
  }
  ZoxErrorCode download() { return zox_watchlist_download(&place); }
  ZoxErrorCode download(const char *reply) {
    server.reply(path, reply);
    return download();
  }

  /** What the latest call left in its place for the server's text. */
  std::string server_text() {
    if (place == &untouched)
      return "(untouched)";
    const OwnedText text(std::exchange(place, &untouched));
    return text ? text.get() : "(null)";
  }

  static void watch(const char *ids) { core->config->watchlist = zox_splitted_list_split(ids); }
  static std::string watchlist() {
    const OwnedString stored(zox_splitted_list_concat(core->config->watchlist));
    return stored->str;
  }
  static void add_posting(gint32 postId) {
    const OwnedEvent event = test::posting(0);
    event->postId = postId;
    zox_eventlist_add_or_replace_event(core->eventlist, event.get());
  }
  static bool has_posting(gint32 postId) {
    return OwnedEvent(zox_eventlist_lookup_id(core->eventlist, postId)) != nullptr;
  }
  [[nodiscard]] bool saved(const char *name) const {
    return std::filesystem::exists(cache_file(name));
  }

  char untouched = 0;
  char *place = &untouched;
};

using ZoxWatchlistUpload = ZoxWatchlistSync;

TEST_F(ZoxWatchlistUpload, SendsModeAndIds) {
  watch("5|7");
  EXPECT_EQ(upload("OK"), 0U);
  EXPECT_EQ(server_text(), "(null)");
  ASSERT_THAT(server.requests(path), SizeIs(1));
  EXPECT_THAT(server.requests(path).front().parameters,
              ElementsAre(Pair("mode", "save"), Pair("data", "|5*1|7*1|")));
}

TEST_F(ZoxWatchlistUpload, JoinsThreeIds) {
  watch("11|12|13");
  upload("OK");
  ASSERT_THAT(server.requests(path), SizeIs(1));
  EXPECT_EQ(server.requests(path).front().parameter("data"), "|11*1|12*1|13*1|");
}

TEST_F(ZoxWatchlistUpload, SendsTheUsersCredentials) {
  core->config->password = zox_string_new("wachtwoord");
  watch("5");
  upload("OK");
  ASSERT_THAT(server.requests(path), SizeIs(1));
  EXPECT_TRUE(server.requests(path).front().headers.contains("authorization"));
}

TEST_F(ZoxWatchlistUpload, EmptyWatchlistSendsNothing) {
  EXPECT_EQ(upload("OK"), 0U);
  EXPECT_EQ(server_text(), "(untouched)");
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(ZoxWatchlistUpload, AnythingButOkIsAnUnknownReply) {
  watch("5");
  for (const char *reply : {"OK\n", "ok", " OK", "OKE", "O", "<html/>"}) {
    EXPECT_EQ(upload(reply), 10U) << reply;
    EXPECT_EQ(server_text(), "(null)") << reply;
  }
}

TEST_F(ZoxWatchlistUpload, ServersNoticeIsHandedOver) {
  watch("5");
  EXPECT_EQ(upload("MSG onderhoud"), 29U);
  EXPECT_EQ(server_text(), " onderhoud");
}

TEST_F(ZoxWatchlistUpload, OtherFailuresComeBackWithoutText) {
  watch("5");
  const std::map<const char *, ZoxErrorCode> results{{"UNAUTH", 2}, {"BANANA", 3}, {"UPD", 27}};
  for (const auto &[reply, result] : results) {
    EXPECT_EQ(upload(reply), result);
    EXPECT_EQ(server_text(), "(null)");
  }
}

TEST_F(ZoxWatchlistUpload, EmptyReplyIsAFailure) {
  watch("5");
  EXPECT_EQ(upload(""), 13U);
}

TEST_F(ZoxWatchlistUpload, FailureBeforeAReplyExists) {
  watch("5");
  core->config->password = zox_string_new("wachtwoord");
  zox_file_set_lib_dir(sandbox.home().c_str());
  EXPECT_EQ(upload("OK"), 8U);
  EXPECT_EQ(server_text(), "(null)");
  EXPECT_EQ(download("|1|"), 8U);
  EXPECT_EQ(server_text(), "(null)");
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(ZoxWatchlistUpload, PlaceForTheTextMayBeMissing) {
  watch("5");
  server.reply(path, "MSG onderhoud");
  EXPECT_EQ(zox_watchlist_upload(nullptr), 29U);
  EXPECT_EQ(zox_watchlist_download(nullptr), 29U);
}

using ZoxWatchlistDownload = ZoxWatchlistSync;

TEST_F(ZoxWatchlistDownload, AsksForTheList) {
  EXPECT_EQ(download("|"), 0U);
  EXPECT_EQ(server_text(), "(null)");
  ASSERT_THAT(server.requests(), SizeIs(1));
  EXPECT_THAT(server.requests().front().parameters, ElementsAre(Pair("mode", "load")));
}

TEST_F(ZoxWatchlistDownload, SendsTheUsersCredentials) {
  core->config->password = zox_string_new("wachtwoord");
  download("|");
  ASSERT_THAT(server.requests(path), SizeIs(1));
  EXPECT_TRUE(server.requests(path).front().headers.contains("authorization"));
}

TEST_F(ZoxWatchlistDownload, EmptyReplyIsAnEmptyList) {
  watch("5");
  EXPECT_EQ(download(""), 0U);
  EXPECT_EQ(watchlist(), "|5|");
}

TEST_F(ZoxWatchlistDownload, AddsKnownPostingsAndSavesTheSettings) {
  add_posting(3);
  add_posting(9);
  EXPECT_EQ(download("|9|3|"), 0U);
  EXPECT_EQ(watchlist(), "|9|3|");
  EXPECT_TRUE(saved("velkor.conf"));
  EXPECT_FALSE(saved("velkor.posts.gz"));
  EXPECT_THAT(server.requests(findpost_path), IsEmpty());
}

TEST_F(ZoxWatchlistDownload, KeepsWhatIsListedAlready) {
  add_posting(3);
  watch("5|3");
  EXPECT_EQ(download("3"), 0U);
  EXPECT_EQ(watchlist(), "|5|3|");
  EXPECT_FALSE(saved("velkor.conf"));
}

TEST_F(ZoxWatchlistDownload, FindsUnknownPostingsAndSavesTheEventList) {
  server.reply(findpost_path,
               "<Post><PostID>12</PostID><FName>f</FName><Title>een</Title><Groups>|1|</Groups>"
               "<Poster>jan</Poster><Cat>0</Cat><SCat>0</SCat><Tags>|a0|</Tags></Post>");
  EXPECT_EQ(download("12"), 0U);
  ASSERT_THAT(server.requests(findpost_path), SizeIs(1));
  EXPECT_EQ(server.requests(findpost_path).front().parameter("id"), "12");
  EXPECT_TRUE(has_posting(12));
  EXPECT_TRUE(saved("velkor.posts.gz"));
  EXPECT_EQ(watchlist(), "|12|");
}

TEST_F(ZoxWatchlistDownload, SkipsWhatTheServiceDoesNotHave) {
  server.reply(findpost_path, "UNAUTH");
  add_posting(3);
  const test::LogCapture log;
  EXPECT_EQ(download("|12|3|"), 0U);
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_watchlist_download(): posting 12 valt niet op de ZOX server te "
                          "vinden\n"));
  EXPECT_EQ(watchlist(), "|3|");
  EXPECT_FALSE(has_posting(12));
}

TEST_F(ZoxWatchlistDownload, IdsBelowOneNeverEnterTheList) {
  const test::LogCapture log;
  EXPECT_EQ(download("|x|-3|"), 0U);
  EXPECT_THAT(log.warnings(), SizeIs(2));
  EXPECT_EQ(watchlist(), "|");
}

TEST_F(ZoxWatchlistDownload, TakesTheFirstThousandsOfEndlessIds) {
  for (gint32 postId = 1; postId <= 10'001; ++postId)
    add_posting(postId);
  std::string reply = "||";
  for (int number = 1; number <= 1'000'000; ++number)
    reply += std::to_string(number) + "||";
  const test::LogCapture log;
  EXPECT_EQ(download(reply.c_str()), 0U);
  EXPECT_EQ(g_slist_length(core->config->watchlist), 10'000U);
  EXPECT_TRUE(zox_watchlist_is_in_list(10'000));
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_watchlist_download(): de server geeft meer dan 10000 "
                          "postings; alleen de eerste tellen\n"));
  EXPECT_THAT(server.requests(findpost_path), IsEmpty());
  const std::string before = watchlist();
  zox_config_load();
  EXPECT_EQ(watchlist(), before);
}

TEST_F(ZoxWatchlistDownload, TakesAsManyIdsAsThereMayBe) {
  add_posting(3);
  std::string reply;
  for (int number = 0; number < 10'000; ++number)
    reply += "3|";
  const test::LogCapture log;
  EXPECT_EQ(download(reply.c_str()), 0U);
  EXPECT_EQ(watchlist(), "|3|");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxWatchlistDownload, AsksAboutAThousandUnknownPostingsAtMost) {
  server.reply(findpost_path, "UNAUTH");
  add_posting(5000);
  add_posting(6000);
  std::string reply = "5000";
  for (int number = 1; number <= 1100; ++number)
    reply += "|" + std::to_string(number);
  const test::LogCapture log;
  EXPECT_EQ(download((reply + "|6000").c_str()), 0U);
  EXPECT_THAT(server.requests(findpost_path), SizeIs(1000));
  EXPECT_EQ(watchlist(), "|5000|6000|");
  ASSERT_THAT(log.warnings(), SizeIs(1001));
  EXPECT_EQ(log.warnings().back(), "zox_watchlist_download(): na 1000 onbekende postings worden "
                                   "andere onbekende overgeslagen\n");
}

TEST_F(ZoxWatchlistDownload, SavesWhatItHasBeforeItAsks) {
  server.reply(findpost_path, "UNAUTH");
  add_posting(3);
  server.reply_once(path, "3|12|3");
  const test::LogCapture log;
  std::string seen;
  const auto watch_requests = [](gint64, gint64, gpointer data) -> gint {
    auto &text = *static_cast<std::string *>(data);
    if (core->config->watchlist != nullptr)
      text = watchlist();
    return 0;
  };
  zox_http_set_transfer_callback(watch_requests, &seen);
  EXPECT_EQ(download(), 0U);
  zox_http_set_transfer_callback(nullptr, nullptr);
  EXPECT_EQ(seen, "|3|");
  EXPECT_TRUE(saved("velkor.conf"));
}

TEST_F(ZoxWatchlistDownload, FailureLeavesTheListAlone) {
  watch("5");
  EXPECT_EQ(download("UNAUTH"), 2U);
  EXPECT_EQ(server_text(), "(null)");
  EXPECT_EQ(download("MSGvol"), 29U);
  EXPECT_EQ(server_text(), "vol");
  zox_http_set_hosts("127.0.0.1:1", nullptr);
  EXPECT_EQ(download(), 16U);
  EXPECT_EQ(watchlist(), "|5|");
}

TEST_F(ZoxWatchlistDownload, EventListKeepsItsReferences) {
  add_posting(3);
  const guint before = G_OBJECT(core->eventlist)->ref_count;
  download("3");
  EXPECT_EQ(G_OBJECT(core->eventlist)->ref_count, before);
}

using ZoxWatchlistSyncDeathTest = test::LibraryTest;

TEST_F(ZoxWatchlistSyncDeathTest, NeedsSettings) {
  zox_config_free();
  const char *message = "assertion failed: \\(core->config\\)";
  EXPECT_DEATH(zox_watchlist_upload(nullptr), message);
  EXPECT_DEATH(zox_watchlist_download(nullptr), message);
}

TEST_F(ZoxWatchlistSyncDeathTest, NoEntryIsNull) {
  core->config->watchlist = g_slist_prepend(nullptr, nullptr);
  EXPECT_DEATH(zox_watchlist_upload(nullptr),
               "zox_watchlist_upload: assertion failed: \\(watchlist\\)");
  g_slist_free(std::exchange(core->config->watchlist, nullptr));
}

TEST(ZoxWatchlistSyncWithoutCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_watchlist_upload(nullptr), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_watchlist_download(nullptr), "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
