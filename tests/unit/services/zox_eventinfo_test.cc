/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_eventinfo.h>

#include <filesystem>

#include <sys/stat.h>

#include <velkor/zox_file.h>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char *find_path = "/3.7.3/xml-findpost.php";
constexpr const char *details_path = "/3.7.3/xml-posts.php";
constexpr const char *details = "<PostInfo><Post><PostID>99</PostID><Title>Ander</Title>"
                                "<Ann>a</Ann><Sig>s</Sig><FType>2</FType><Files>30</Files>"
                                "<FStart>4</FStart><Img>i</Img></Post>"
                                "<MP3><Track>een</Track></MP3></PostInfo>";

class ZoxEventinfo : public ServiceTest {
protected:
  [[nodiscard]] bool saved() const {
    return std::filesystem::exists(cache_file("velkor.posts.gz"));
  }

  LogCapture log;
};

/** The file itself: what is written takes its place as another one. */
ino_t inode_of(const std::filesystem::path &path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  return status.st_ino;
}

TEST_F(ZoxEventinfo, LeavesACacheFileThatHoldsTheOutcomeAlready) {
  cache(5);
  cache(6);
  ASSERT_EQ(zox_eventlist_save(core->eventlist), 1);
  const std::filesystem::path file = cache_file("velkor.posts.gz");
  const ino_t before = inode_of(file);
  server.reply(details_path, details);
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 0U);
  EXPECT_EQ(inode_of(file), before);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE);
  cache(6, "Andere titel");
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 0U);
  EXPECT_NE(inode_of(file), before);
}

TEST_F(ZoxEventinfo, FindsAPosting) {
  server.reply(find_path, "<Post><PostID>5</PostID><Title>T</Title></Post>");
  const OwnedEvent event(zox_eventinfo_findpost(5));
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(event->postId, 5);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-findpost.php id=5"));
  EXPECT_EQ(cached(5), nullptr);
}

TEST_F(ZoxEventinfo, SendsAtMostNineDigits) {
  cache(1234567890);
  server.reply(details_path, details);
  zox_eventinfo_findpost(2147483647);
  zox_eventinfo_findpost(-1234567890);
  EXPECT_EQ(zox_eventinfo_fetch(1234567890, nullptr), 0U);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-findpost.php id=214748364",
                                  "/3.7.3/xml-findpost.php id=-12345678",
                                  "/3.7.3/xml-posts.php id=123456789"));
}

TEST_F(ZoxEventinfo, FindsNothingWhenTheRequestFails) {
  server.reply(find_path, "MSGOnderhoud");
  EXPECT_EQ(standard_output_of([] { EXPECT_EQ(zox_eventinfo_findpost(5), nullptr); }), "");
}

TEST_F(ZoxEventinfo, PrintsAReplyThatIsNoPosting) {
  server.reply(find_path, "niets te vinden");
  EXPECT_EQ(standard_output_of([] { EXPECT_EQ(zox_eventinfo_findpost(5), nullptr); }),
            "uitvoer = niets te vinden\n");
}

TEST_F(ZoxEventinfo, MergesTheDetailsIntoTheCachedPosting) {
  cache(5);
  server.reply(details_path, details);
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 0U);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-posts.php id=5"));
  const OwnedEvent event = cached(5);
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(text_of(event->title), "Titel");
  EXPECT_EQ(text_of(event->ann), "a");
  EXPECT_EQ(text_of(event->des), "(null)");
  EXPECT_EQ(text_of(event->sig), "s");
  EXPECT_EQ(text_of(event->img), "i");
  EXPECT_EQ(event->fType, 2);
  EXPECT_EQ(event->files, 30);
  EXPECT_EQ(event->fStart, 4);
  ASSERT_EQ(g_slist_length(event->mp3Tracks), 1U);
  EXPECT_EQ(text_of(static_cast<GString *>(event->mp3Tracks->data)), "een");
  EXPECT_EQ(cached(99), nullptr);
}

TEST_F(ZoxEventinfo, ReplacesEarlierDetailsAlsoByNothing) {
  cache(5);
  server.reply_once(details_path, details);
  server.reply_once(details_path, "<PostInfo><Post><Des>d</Des></Post></PostInfo>");
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 0U);
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 0U);
  const OwnedEvent event = cached(5);
  EXPECT_EQ(text_of(event->ann), "(null)");
  EXPECT_EQ(text_of(event->des), "d");
  EXPECT_EQ(text_of(event->img), "(null)");
  EXPECT_EQ(event->files, 0);
  EXPECT_EQ(event->mp3Tracks, nullptr);
}

TEST_F(ZoxEventinfo, AddsAPostingThatTheServerFindsAndSaves) {
  server.reply(find_path, "<Post><PostID>5</PostID><Title>Gevonden</Title>"
                          "<Poster>p</Poster></Post>");
  server.reply(details_path, details);
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 0U);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-findpost.php id=5", "/3.7.3/xml-posts.php id=5"));
  EXPECT_EQ(text_of(cached(5)->title), "Gevonden");
  EXPECT_EQ(text_of(cached(5)->ann), "a");
  EXPECT_THAT(read_gzip(cache_file("velkor.posts.gz")), testing::HasSubstr("Gevonden"));
}

TEST_F(ZoxEventinfo, TellsThatAPostingIsGone) {
  server.reply(find_path, "");
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 30U);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_TRUE(server.requests(details_path).empty());
}

TEST_F(ZoxEventinfo, LeavesTheCacheWhenDetailsCannotBeRead) {
  cache(5);
  server.reply(details_path, "<PostInfo><Other/></PostInfo>");
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 11U);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_THAT(log.warnings(), ElementsAre("zox_eventinfo_fetch(): Parsen van gegevens mislukt\n"));
  EXPECT_EQ(cached(5)->ann, nullptr);
  EXPECT_FALSE(saved());
}

TEST_F(ZoxEventinfo, SavesNothingWhenTheRequestFails) {
  cache(5);
  server.reply(details_path, "MSGOnderhoud");
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 29U);
  EXPECT_EQ(message.text(), "Onderhoud");
  EXPECT_FALSE(saved());
}

TEST_F(ZoxEventinfo, AddsNothingThatIsFoundWithoutDetails) {
  server.reply(find_path, "<Post><PostID>5</PostID></Post>");
  server.reply(details_path, "UNAUTH");
  EXPECT_EQ(zox_eventinfo_fetch(5, message), 2U);
  EXPECT_EQ(cached(5), nullptr);
  EXPECT_FALSE(saved());
}

using ZoxEventinfoDeathTest = LibraryTest;

TEST_F(ZoxEventinfoDeathTest, AssertsTheCallback) {
  EXPECT_DEATH(zox_eventinfo_fetch_async(1, nullptr, nullptr), "assertion failed: \\(cb\\)");
}

}  // namespace
}  // namespace velkor::test
