/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Requests on threads of their own: their one end, their results, cancelling and waiting. */
#include <velkor/zox_request.h>

#include <thread>

#include <velkor/zox_config.h>
#include <velkor/zox_http_curl.h>

#include "tests/unit/operations/request_fixture.h"
#include "tests/unit/services/thread_refusal.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char *details_path = "/3.7.3/xml-posts.php";
constexpr const char *forum_path = "/3.7.3/xml-dyn.php";
constexpr const char *update_path = "/3.7.3/xml.php";
constexpr const char *details_reply = "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>";

using Request = RequestTest;

TEST_F(Request, BringsDetailsAndEndsOnceOnTheMainLoop) {
  cache(5);
  server.reply(details_path, details_reply);
  const ZoxRequestOptions options = told.options();
  told = zox_request_details(5, &options);
  EXPECT_EQ(zox_request_state(told), ZOX_REQUEST_RUNNING);
  EXPECT_EQ(zox_request_kind(told), ZOX_REQUEST_DETAILS);
  EXPECT_EQ(zox_request_post_id(told), 5);
  EXPECT_EQ(zox_request_event(told), nullptr);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(told.thread, std::this_thread::get_id());
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_SUCCESS);
  ASSERT_NE(zox_request_event(told), nullptr);
  EXPECT_EQ(text_of(zox_request_event(told)->ann), "a");
  EXPECT_EQ(text_of(cached(5)->ann), "a");
  EXPECT_EQ(zox_requests_count(), 0U);
}

TEST_F(Request, BringsAForum) {
  cache(5);
  server.reply(forum_path, "<Forum><Event Code=\"0\"><View>9</View></Event></Forum>");
  const ZoxRequestOptions options = told.options();
  told = zox_request_forum(5, 77, &options);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  ASSERT_NE(zox_request_event(told), nullptr);
  EXPECT_EQ(zox_request_event(told)->view, 9);
  EXPECT_THAT(sent(), ElementsAre(std::string(forum_path) + " id=5 lastcheck=77"));
}

TEST_F(Request, TellsWhyItFailed) {
  cache(5);
  server.reply(details_path, "MSGOnderhoud");
  std::string path;
  told.on_done = [&path] {
    if (const ZoxHttpFailure *failure = zox_http_last_failure())
      path = failure->path;
  };
  const ZoxRequestOptions options = told.options();
  told = zox_request_details(5, &options);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(failed));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_SERVER_NOTICE);
  EXPECT_STREQ(zox_request_message(told), "Onderhoud");
  EXPECT_THAT(text_of(zox_request_failure(told)), StartsWith(server.host() + details_path));
  EXPECT_EQ(path, details_path);
  EXPECT_EQ(zox_request_event(told), nullptr);
}

TEST_F(Request, EndsWhenThereIsNoThread) {
  {
    const ThreadRefusal refusal;
    const ZoxRequestOptions options = told.options();
    told = zox_request_details(5, &options);
  }
  EXPECT_THAT(told.events, IsEmpty());
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(failed));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_UNKNOWN_ERROR);
  EXPECT_STREQ(zox_request_message(told), "geen thread");
}

TEST_F(Request, NeedsNobodyWhoIsTold) {
  cache(5);
  server.reply(details_path, details_reply);
  zox_request_unref(zox_request_details(5, nullptr));
  EXPECT_TRUE(zox_requests_wait(a_long_time));
  EXPECT_EQ(text_of(cached(5)->ann), "a");
}

TEST_F(Request, ACancelledOneIsToldApartAndChangesNothing) {
  cache(5);
  server.reply(details_path, never_ending());
  const ZoxRequestOptions options = told.options();
  told = zox_request_details(5, &options);
  wait_until_asked(details_path);
  EXPECT_EQ(zox_request_state(told), ZOX_REQUEST_RUNNING);
  zox_request_cancel(told);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(cancelled));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_UNKNOWN_ERROR);
  EXPECT_EQ(zox_request_failure(told), nullptr);
  EXPECT_EQ(cached(5)->ann, nullptr);
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.posts.gz")));
}

TEST_F(Request, CancellingAnEndedOneDoesNothing) {
  cache(5);
  server.reply(details_path, details_reply);
  const ZoxRequestOptions options = told.options();
  told = zox_request_details(5, &options);
  run_until_ended(told);
  zox_request_cancel(told);
  EXPECT_EQ(zox_request_state(told), ZOX_REQUEST_DONE);
  EXPECT_THAT(told.events, ElementsAreArray(done));
}

TEST_F(Request, EndsOnTheContextChosen) {
  const std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>> context(
      g_main_context_new());
  cache(5);
  server.reply(details_path, details_reply);
  const ZoxRequestOptions options = told.options(context.get());
  told = zox_request_details(5, &options);
  std::jthread other([&] {
    while (told.events.size() < 2)
      g_main_context_iteration(context.get(), TRUE);
  });
  const std::thread::id thread = other.get_id();
  other.join();
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(told.thread, thread);
}

TEST_F(Request, WaitingEndsThemHere) {
  cache(5);
  server.reply(details_path, details_reply);
  const ZoxRequestOptions options = told.options();
  told = zox_request_details(5, &options);
  EXPECT_TRUE(zox_requests_wait(a_long_time));
  EXPECT_THAT(told.events, ElementsAreArray(done));
  while (g_main_context_iteration(nullptr, FALSE) != FALSE)
    continue;
  EXPECT_THAT(told.events, ElementsAreArray(done));
}

TEST_F(Request, WaitingTellsOfWhatIsLeft) {
  cache(5);
  server.reply(details_path, never_ending());
  const ZoxRequestOptions options = told.options();
  told = zox_request_details(5, &options);
  EXPECT_EQ(zox_requests_count(), 1U);
  EXPECT_FALSE(zox_requests_wait(0));
  zox_requests_cancel_all();
  EXPECT_TRUE(zox_requests_wait(a_long_time));
  EXPECT_THAT(told.events, ElementsAreArray(cancelled));
}

std::string available(const std::string &chunks) {
  return "<Events><Event Code='0'><Stamp>1000</Stamp></Event>" +
         (chunks.empty() ? "" : "<Event Code='7'><Chunks>" + chunks + "</Chunks></Event>") +
         "</Events>";
}

TEST_F(Request, AnUpdateTellsOfItsDumps) {
  server.reply(update_path, available("een|twee"));
  server.reply("/3.7.3/dumps/een.gz", document_of({posting_element(1, "<Title>een</Title>")}));
  server.reply("/3.7.3/dumps/twee.gz", document_of({posting_element(2, "<Title>twee</Title>")}));
  const ZoxRequestOptions options = told.options();
  told = zox_request_update(&options);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_SUCCESS);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 2U);
  ASSERT_FALSE(told.progress.empty());
  EXPECT_EQ(told.progress.back().dumps, 2);
  EXPECT_EQ(told.progress.back().step, ZOX_REQUEST_STEP_SAVING);
}

TEST_F(Request, AnUpdateTellsWhatItChanged) {
  server.reply(update_path, available("een"));
  server.reply("/3.7.3/dumps/een.gz", document_of({posting_element(2, "<Title>twee</Title>")}));
  const ZoxRequestOptions options = told.options();
  told = zox_request_update(&options);
  EXPECT_EQ(zox_request_update_result(told), nullptr);
  run_until_ended(told);
  const ZoxUpdateResult *result = zox_request_update_result(told);
  ASSERT_NE(result, nullptr);
  guint32 count = 0;
  const gint32 *added = zox_update_result_ids(result, ZOX_UPDATE_NEW, &count);
  EXPECT_THAT(std::vector<gint32>(added, added + count), ElementsAre(2));
}

TEST_F(Request, AnUpdateThatFindsNothingNewSucceeds) {
  server.reply(update_path, available(""));
  const ZoxRequestOptions options = told.options();
  told = zox_request_update(&options);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(done));
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_NOTHING_NEW);
}

TEST_F(Request, ACancelledUpdateChangesNeitherListNorTimes) {
  server.reply(update_path, available("een|twee"));
  server.reply("/3.7.3/dumps/een.gz", document_of({posting_element(1, "<Title>een</Title>")}));
  server.reply("/3.7.3/dumps/twee.gz", never_ending());
  const ZoxRequestOptions options = told.options();
  told = zox_request_update(&options);
  wait_until_asked("/3.7.3/dumps/twee.gz");
  ZoxRequestProgress progress;
  zox_request_progress(told, &progress);
  EXPECT_EQ(progress.dump, 2);
  EXPECT_EQ(progress.dumps, 2);
  EXPECT_EQ(progress.step, ZOX_REQUEST_STEP_DOWNLOAD);
  zox_request_cancel(told);
  run_until_ended(told);
  EXPECT_THAT(told.events, ElementsAreArray(cancelled));
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 0U);
  EXPECT_EQ(core->config->lastCheck, 0);
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.posts.gz")));
}

TEST_F(Request, UpdatesRunOneAfterTheOther) {
  server.reply_once(update_path, never_ending());
  server.reply(update_path, available(""));
  Told second;
  const ZoxRequestOptions options = told.options();
  told = zox_request_update(&options);
  wait_until_asked(update_path);
  const ZoxRequestOptions second_options = second.options();
  second = zox_request_update(&second_options);
  zox_request_cancel(told);
  run_until_ended(second);
  EXPECT_THAT(told.events, ElementsAreArray(cancelled));
  EXPECT_THAT(second.events, ElementsAreArray(done));
}

}  // namespace
}  // namespace velkor::test
