/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_post.h>

#include <map>

#include "tests/support/fresh_process.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

constexpr const char *path = "/3.7.3/xml-post.php";

/** The steps of the spot being sent; a plain callback has no other place for them. */
std::vector<gint32> steps;
gint note_step(gint32 step) {
  steps.push_back(step);
  return 0;
}

GSList *texts(std::initializer_list<const char *> items) {
  GSList *list = nullptr;
  for (const char *item : items)
    list = g_slist_append(list, zox_string_new(item));
  return list;
}

class ZoxPost : public ServiceTest {
protected:
  ZoxPost() {
    steps.clear();
    event->title = zox_string_new("Titel & meer");
    event->status = 0;
    event->cat = 0;
    event->sCat = 0;
  }

  ZoxErrorCode send() {
    steps.clear();
    return zox_post_send(event.get(), note_step);
  }

  /** Gives the event all that is sent after the posting itself. */
  void add_follow_ups() {
    event->des = zox_string_new("beschrijving");
    event->sig = zox_string_new("groet");
    event->mp3Tracks = texts({"een", "twee", "drie"});
  }

  OwnedEvent event{zox_event_new()};
};

/** The spot being sent and the post ids that it had at each step, for a callback that looks. */
const ZoxEvent *spot = nullptr;
std::map<gint32, gint32> ids;
gint note_id(gint32 step) {
  ids[step] = spot->postId;
  return 0;
}

TEST_F(ZoxPost, KnowsThePostIdWhenItIsAccepted) {
  spot = event.get();
  ids.clear();
  server.reply(path, "1987");
  EXPECT_EQ(zox_post_send(event.get(), note_id), 0U);
  EXPECT_EQ(ids.at(ZOX_POST_SENT), -1);
  EXPECT_EQ(ids.at(ZOX_POST_ACCEPTED), 987);
}

TEST_F(ZoxPost, SendsAPlainPostingInOneRequest) {
  server.reply(path, "142");
  EXPECT_EQ(send(), 0U);
  EXPECT_EQ(event->postId, 42);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 4, 15));
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-post.php m=add t=Titel & meer s=0 g=| ft=0 fn=0 fs=0 "
                                  "pars=0 pt=0 c=0 sc=0 tags="));
}

TEST_F(ZoxPost, SendsAllThatIsPresentInOrder) {
  event->status = -1;
  event->groups = texts({"12", "40"});
  event->fName = zox_string_new("bestand");
  event->fType = 2;
  event->files = 3;
  event->link = zox_string_new("http://x.example/");
  event->ann = zox_string_new("aankondiging");
  event->fStart = 4;
  event->img = zox_string_new("plaatje");
  event->pars = 5;
  event->blockSize = 6;
  event->parType = 7;
  event->cat = 1;
  event->sCat = 9;
  event->tags = texts({"b1", "a9", "d2"});
  event->tag = zox_string_new("vrij");
  server.reply(path, "11");
  EXPECT_EQ(send(), 0U);
  EXPECT_THAT(
      sent(),
      ElementsAre("/3.7.3/xml-post.php m=add t=Titel & meer s=-1 g=|12|40| fstr=bestand ft=2 "
                  "fn=3 l=http://x.example/ a=aankondiging fs=4 img=plaatje pars=5 bs=6 pt=7 "
                  "c=1 sc=9 tags=|b1|d2| tag=vrij"));
  EXPECT_EQ(event->files, 3);
}

TEST_F(ZoxPost, LeavesOutABlockSizeThatIsNotAboveZero) {
  server.reply(path, "11");
  for (const gint32 size : {0, -1}) {
    event->blockSize = size;
    EXPECT_EQ(send(), 0U);
    EXPECT_THAT(sent().back(), testing::Not(HasSubstr(" bs=")));
  }
}

TEST_F(ZoxPost, LeavesOutTheTagOfTheSubCategory) {
  server.reply(path, "11");
  event->sCat = 3;
  event->tags = texts({"a3", "x", "a3"});
  EXPECT_EQ(send(), 0U);
  EXPECT_THAT(sent().back(), HasSubstr(" tags=|x|"));
  zox_splitted_list_free(&event->tags);
  event->tags = texts({"a3"});
  EXPECT_EQ(send(), 0U);
  EXPECT_THAT(sent().back(), testing::EndsWith(" tags="));
  zox_splitted_list_free(&event->tags);
  event->tags = texts({"A3", "a33", "a"});
  EXPECT_EQ(send(), 0U);
  EXPECT_THAT(sent().back(), testing::EndsWith(" tags=|A3|a33|a|"));
  EXPECT_EQ(g_slist_length(event->tags), 3U);
}

TEST_F(ZoxPost, SendsDescriptionSignatureAndTracks) {
  add_follow_ups();
  event->files = 99;
  event->fStart = 98;
  server.reply_once(path, "1345");
  server.reply(path, "wat dan ook");
  EXPECT_EQ(send(), 0U);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15));
  ASSERT_THAT(sent(), SizeIs(4));
  EXPECT_THAT(sent()[0], HasSubstr(" fn=3 fs=1 "));
  EXPECT_EQ(sent()[1], "/3.7.3/xml-post.php section=1 d=beschrijving id=345 m=upd");
  EXPECT_EQ(sent()[2], "/3.7.3/xml-post.php section=2 sig=groet id=345 m=upd");
  EXPECT_EQ(sent()[3], "/3.7.3/xml-post.php s=345 m=mp3 str=een|ZOX|twee|ZOX|drie");
  EXPECT_EQ(event->files, 3);
  EXPECT_EQ(event->fStart, 1);
}

TEST_F(ZoxPost, SendsEmptyTextsThatArePresent) {
  event->des = zox_string_new("");
  event->mp3Tracks = texts({"", "x"});
  server.reply(path, "11");
  EXPECT_EQ(send(), 0U);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 4, 5, 6, 7, 11, 12, 13, 15));
  EXPECT_THAT(sent().back(), testing::EndsWith(" str=|ZOX|x"));
}

TEST_F(ZoxPost, EndsWithAReservation) {
  server.reply(path, "0345");
  EXPECT_EQ(send(), 26U);
  EXPECT_EQ(event->postId, 345);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 4, 14));
  event->sig = zox_string_new("groet");
  EXPECT_EQ(send(), 26U);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 4, 8, 9, 10, 14));
}

TEST_F(ZoxPost, TellsOfARefusal) {
  add_follow_ups();
  server.reply(path, "C123");
  EXPECT_EQ(send(), 25U);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 16));
  EXPECT_EQ(event->postId, -1);
  EXPECT_THAT(sent(), SizeIs(1));
}

TEST_F(ZoxPost, DoesNotUnderstandAnyOtherReply) {
  for (const char *reply : {"2", "c1", " 1", "OK"}) {
    server.reply(path, reply);
    EXPECT_EQ(send(), 11U) << reply;
    EXPECT_THAT(steps, ElementsAre(1, 2, 3, 16));
    EXPECT_EQ(event->postId, -1);
  }
}

TEST_F(ZoxPost, TakesAMissingNumberForZero) {
  server.reply(path, "1");
  EXPECT_EQ(send(), 0U);
  EXPECT_EQ(event->postId, 0);
}

TEST_F(ZoxPost, EndsAtTheFirstRequestThatFails) {
  add_follow_ups();
  const std::vector<gint32> expected[] = {{1, 2, 3, 16},
                                          {1, 2, 3, 4, 5, 6, 16},
                                          {1, 2, 3, 4, 5, 6, 7, 8, 9, 16},
                                          {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 16}};
  for (std::size_t good = 0; good < std::size(expected); ++good) {
    for (std::size_t request = 0; request < good; ++request)
      server.reply_once(path, "177");
    server.reply_once(path, "MSGOnderhoud");
    event->postId = -1;
    EXPECT_EQ(send(), 29U);
    EXPECT_EQ(steps, expected[good]);
    EXPECT_EQ(event->postId, good == 0 ? -1 : 77);
  }
}

TEST_F(ZoxPost, CountsAnEmptyReplyAsAFailure) {
  server.reply(path, "");
  EXPECT_EQ(send(), 13U);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 16));
}

TEST_F(ZoxPost, DoesTheSameWithoutACallback) {
  add_follow_ups();
  server.reply(path, "0345");
  EXPECT_EQ(zox_post_send(event.get(), nullptr), 26U);
  EXPECT_THAT(sent(), SizeIs(4));
  EXPECT_EQ(event->postId, 345);
}

using ZoxPostDeathTest = ZoxPost;

TEST_F(ZoxPostDeathTest, AssertsItsArguments) {
  const FreshProcess fresh(sandbox);
  EXPECT_DEATH(zox_post_send(nullptr, nullptr), "assertion failed: \\(event\\)");
  EXPECT_DEATH(
      {
        replace_string(event->title, nullptr);
        zox_post_send(event.get(), nullptr);
      },
      "assertion failed: \\(value\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_post_send(event.get(), nullptr);
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor::test
