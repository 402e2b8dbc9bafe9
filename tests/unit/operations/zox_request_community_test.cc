/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Requests about the community: what they send and what they bring. */
#include <velkor/zox_request.h>

#include <filesystem>

#include <velkor/zox_config.h>
#include <velkor/zox_file.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_myzox.h>
#include <velkor/zox_watchlist.h>

#include "tests/unit/operations/request_fixture.h"
#include "tests/unit/services/mail_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

class CommunityRequest : public RequestTest {
protected:
  /** Starts a request and runs the main loop until it has ended. */
  template <typename Start, typename... Arguments>
  void run(Start start, Arguments... arguments) {
    const ZoxRequestOptions options = told.options();
    told = start(arguments..., &options);
    run_until_ended(told);
  }
};

TEST_F(CommunityRequest, AReactionTellsAnswerAndId) {
  server.reply("/3.7.3/xml-forum.php", "OK17");
  run(zox_request_reaction, 5, 3, "ja");
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(zox_request_answer(told), ZOX_ANSWER_DONE);
  EXPECT_EQ(zox_request_number(told), 17);
  EXPECT_EQ(zox_request_post_id(told), 5);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-forum.php m=add b=ja s=5 r=3"));
}

TEST_F(CommunityRequest, ARefusedReactionIsNoFailure) {
  server.reply("/3.7.3/xml-forum.php", "LOCKED");
  run(zox_request_reaction, 5, 0, "ja");
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(zox_request_answer(told), ZOX_ANSWER_LOCKED);
}

TEST_F(CommunityRequest, KudosAreCounted) {
  server.reply("/3.7.3/xml-kudos.php", "12*3");
  run(zox_request_kudos_get, 5);
  EXPECT_EQ(zox_request_number(told), 12);
  EXPECT_EQ(zox_request_second_number(told), 3);
}

TEST_F(CommunityRequest, KudosAreGiven) {
  server.reply("/3.7.3/xml-kudos.php", "DUPE");
  run(zox_request_kudos_give, 5, 2);
  EXPECT_EQ(zox_request_answer(told), ZOX_ANSWER_DUPLICATE);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-kudos.php mode=give id=5 kudos=2"));
}

TEST_F(CommunityRequest, AWarningHasItsNumber) {
  server.reply("/3.7.3/xml-warn.php", "OK8");
  run(zox_request_warning, 5, 6, "dubbel");
  EXPECT_EQ(zox_request_number(told), 8);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-warn.php id=5 forumid=6 reason=dubbel"));
}

TEST_F(CommunityRequest, AProfileIsBrought) {
  server.reply("/3.7.3/xml-user.php", "<UserInfo><Name>anna</Name><Posts>4</Posts></UserInfo>");
  run(zox_request_profile, "anna");
  ASSERT_NE(zox_request_user(told), nullptr);
  EXPECT_STREQ(zox_request_user(told)->name, "anna");
}

TEST_F(CommunityRequest, MailIsCheckedFor) {
  server.reply("/3.7.3/xml-mail.php", "Y");
  run(zox_request_mail_check);
  EXPECT_EQ(zox_request_number(told), 1);
}

TEST_F(CommunityRequest, FetchedMailJoinsTheBoxOnTheMainLoop) {
  server.reply("/3.7.3/xml-mail.php", "<Mail>" + received("anna") + received("bert") + "</Mail>");
  const ZoxRequestOptions options = told.options();
  std::size_t count = 0;
  told.on_done = [&count] { count = zox_mail_get_num_messages(); };
  told = zox_request_mail_fetch(&options);
  wait_until_asked("/3.7.3/xml-mail.php");
  EXPECT_EQ(core->mail, nullptr);
  run_until_ended(told);
  EXPECT_EQ(count, 2U);
  EXPECT_EQ(zox_request_number(told), 2);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 anna/s/b", "1 bert/s/b"));
}

TEST_F(CommunityRequest, FetchedMailThatCannotBeSavedIsTold) {
  ASSERT_TRUE(std::filesystem::create_directories(sandbox.cache() / "velkor.mail" / "in-the-way"));
  server.reply("/3.7.3/xml-mail.php", "<Mail>" + received("anna") + "</Mail>");
  ZoxFileStatus status = ZOX_FILE_FINE;
  told.on_done = [&status] { status = zox_file_last_error()->status; };
  run(zox_request_mail_fetch);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(status, static_cast<ZoxFileStatus>(ZOX_FILE_NOT_WRITTEN));
  EXPECT_THAT(shown(core->mail), ElementsAre("1 anna/s/b"));
}

TEST_F(CommunityRequest, SentMailJoinsTheBox) {
  server.reply("/3.7.3/xml-mail.php", "SENT");
  run(zox_request_mail_send, "anna", "onderwerp", "tekst");
  EXPECT_THAT(shown(core->mail), ElementsAre("2 anna/onderwerp/tekst"));
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-mail.php mode=write to=anna s=onderwerp b=tekst"));
}

TEST_F(CommunityRequest, MailToNobodyIsNotKept) {
  server.reply("/3.7.3/xml-mail.php", "NOTFOUND");
  run(zox_request_mail_send, "niemand", "onderwerp", "tekst");
  EXPECT_THAT(told.events, ElementsAreArray(failed));
  EXPECT_EQ(zox_request_code(told), static_cast<ZoxErrorCode>(ZOX_RESULT_ADDRESSEE_UNKNOWN));
  EXPECT_EQ(core->mail, nullptr);
}

TEST_F(CommunityRequest, TheWatchlistIsStored) {
  core->config->watchlist = g_slist_append(nullptr, zox_string_new("7"));
  server.reply("/3.7.3/xml-wlist.php", "OK");
  run(zox_request_watchlist_save);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-wlist.php mode=save data=|7*1|"));
}

TEST_F(CommunityRequest, AnEmptyWatchlistIsNotSent) {
  run(zox_request_watchlist_save);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(CommunityRequest, TheWatchlistIsRestored) {
  cache(7);
  core->config->watchlist = g_slist_append(nullptr, zox_string_new("7"));
  server.reply("/3.7.3/xml-wlist.php", "|7|8|9|");
  server.reply_once("/3.7.3/xml-findpost.php",
                    "<Post><PostID>8</PostID><Title>acht</Title></Post>");
  server.reply("/3.7.3/xml-findpost.php", "");
  const LogCapture log;
  run(zox_request_watchlist_load);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(zox_request_number(told), 1);
  EXPECT_TRUE(zox_watchlist_is_in_list(8));
  EXPECT_FALSE(zox_watchlist_is_in_list(9));
  EXPECT_NE(cached(8), nullptr);
}

TEST_F(CommunityRequest, TheOwnPostingsAreBrought) {
  server.reply("/3.7.3/xml-myzox.php", "<MyZOX><Post ID=\"7\"><Title>t</Title></Post></MyZOX>");
  run(zox_request_own_postings);
  const GSList *list = zox_request_own_list(told);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(static_cast<const ZoxMyzoxPost *>(list->data)->postId, 7);
}

TEST_F(CommunityRequest, AnOwnPostingIsRefreshed) {
  server.reply("/3.7.3/xml-myzox.php", "OK");
  run(zox_request_own_refresh, 7);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-myzox.php mode=update id=7"));
}

class SpotRequest : public CommunityRequest {
protected:
  SpotRequest() : spot(zox_event_new()) {
    spot->title = zox_string_new("Titel");
    spot->des = zox_string_new("tekst");
  }
  OwnedEvent spot;
};

TEST_F(SpotRequest, TellsIdAndSteps) {
  server.reply_once("/3.7.3/xml-post.php", "142");
  server.reply("/3.7.3/xml-post.php", "OK");
  run(zox_request_spot, spot.get());
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(zox_request_answer(told), ZOX_ANSWER_DONE);
  EXPECT_EQ(zox_request_number(told), 42);
  EXPECT_EQ(spot->postId, -1);
  ZoxRequestProgress progress;
  zox_request_progress(told, &progress);
  EXPECT_EQ(progress.spotStep, ZOX_POST_DONE);
}

TEST_F(SpotRequest, TellsOfAReservation) {
  server.reply_once("/3.7.3/xml-post.php", "042");
  server.reply("/3.7.3/xml-post.php", "OK");
  run(zox_request_spot, spot.get());
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_SPOT_RESERVED);
  EXPECT_EQ(zox_request_answer(told), ZOX_ANSWER_RESERVED);
}

TEST_F(SpotRequest, TellsOfARefusal) {
  server.reply("/3.7.3/xml-post.php", "C");
  run(zox_request_spot, spot.get());
  EXPECT_THAT(told.events, ElementsAreArray(failed));
  EXPECT_EQ(zox_request_answer(told), ZOX_ANSWER_REFUSED);
  EXPECT_EQ(zox_request_number(told), 0);
}

TEST_F(SpotRequest, TellsOfASpotWithoutItsRest) {
  server.reply_once("/3.7.3/xml-post.php", "142");
  server.reply("/3.7.3/xml-post.php", "BAN");
  run(zox_request_spot, spot.get());
  EXPECT_THAT(told.events, ElementsAreArray(failed));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_BANNED);
  EXPECT_EQ(zox_request_answer(told), ZOX_ANSWER_DONE);
  EXPECT_EQ(zox_request_number(told), 42);
}

TEST_F(CommunityRequest, SigningUpTellsOfARefusal) {
  server.reply("/3.7.3/xml-signup.php", "E1");
  run(zox_request_signup, "anna", "geheim", "a@b");
  EXPECT_THAT(told.events, ElementsAreArray(failed));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_USERNAME_TAKEN);
}

TEST_F(CommunityRequest, NewsgroupsAreReplaced) {
  server.reply("/3.7.3/xml-groups.php",
               "<Groups><Group ID=\"3\"><Name>a.b</Name></Group></Groups>");
  run(zox_request_newsgroups);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  ASSERT_NE(zox_group_by_id(3), nullptr);
}

TEST_F(CommunityRequest, AReplyWithoutNewsgroupsIsAFailure) {
  server.reply("/3.7.3/xml-groups.php", "<Groups><x/></Groups>");
  run(zox_request_newsgroups);
  EXPECT_THAT(told.events, ElementsAreArray(failed));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_NOT_PARSED);
}

TEST_F(CommunityRequest, ACancelledOneDoesNotTouchTheBox) {
  server.reply("/3.7.3/xml-mail.php", never_ending());
  const ZoxRequestOptions options = told.options();
  told = zox_request_mail_send("anna", "onderwerp", "tekst", &options);
  wait_until_asked("/3.7.3/xml-mail.php");
  zox_request_cancel(told);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(cancelled));
  EXPECT_EQ(core->mail, nullptr);
}

}  // namespace
}  // namespace velkor::test
