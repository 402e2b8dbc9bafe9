/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Requests on threads of their own: their one end, their results, cancelling and waiting. */
#include <velkor/zox_request.h>

#include <atomic>
#include <thread>

#include <velkor/zox_config.h>
#include <velkor/zox_http_curl.h>

#include "tests/unit/services/service_fixture.h"
#include "tests/unit/services/thread_refusal.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr const char *details_path = "/3.7.3/xml-posts.php";
constexpr const char *forum_path = "/3.7.3/xml-dyn.php";
constexpr const char *update_path = "/3.7.3/xml.php";
constexpr const char *details_reply = "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>";
constexpr guint32 a_long_time = 600'000;

/** A reply that stops before its end; the connection stays open. */
StubReply never_ending() {
  return {.body = "<", .claim_length = 1000, .stall = true};
}

/** A request of the test, and all that it told. */
class Told {
public:
  ~Told() {
    if (request_ != nullptr)
      zox_request_unref(request_);
  }
  Told() = default;
  Told(const Told &) = delete;
  Told &operator=(const Told &) = delete;

  ZoxRequestOptions options(GMainContext *context = nullptr) {
    return {.context = context,
            .progress = note_progress,
            .done = note_done,
            .userData = this,
            .destroy = note_release};
  }
  ZoxRequest *operator=(ZoxRequest *request) { return request_ = request; }
  operator ZoxRequest *() const { return request_; }

  std::vector<std::string> events;
  std::vector<ZoxRequestProgress> progress;
  std::thread::id thread;
  std::function<void()> on_done;

private:
  static void note_progress(ZoxRequest *, const ZoxRequestProgress *progress, gpointer self) {
    static_cast<Told *>(self)->progress.push_back(*progress);
  }
  static void note_done(ZoxRequest *request, gpointer self) {
    auto *told = static_cast<Told *>(self);
    told->thread = std::this_thread::get_id();
    told->events.push_back("done " + std::to_string(zox_request_state(request)));
    if (told->on_done)
      told->on_done();
  }
  static void note_release(gpointer self) {
    static_cast<Told *>(self)->events.push_back("released");
  }

  ZoxRequest *request_ = nullptr;
};

const std::vector<std::string> done{"done 1", "released"};
const std::vector<std::string> failed{"done 2", "released"};
const std::vector<std::string> cancelled{"done 3", "released"};

class Request : public ServiceTest {
protected:
  ~Request() override {
    zox_requests_cancel_all();
    zox_requests_wait(a_long_time);
  }

  static void run_until_ended(const Told &told) {
    while (told.events.size() < 2)
      g_main_context_iteration(nullptr, TRUE);
    while (g_main_context_iteration(nullptr, FALSE) != FALSE)
      continue;
  }
  void wait_until_asked(const char *path) const {
    while (server.requests(path).empty())
      std::this_thread::yield();
  }

  Told told;
};

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
  EXPECT_EQ(told.events, done);
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
  EXPECT_EQ(told.events, done);
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
  EXPECT_EQ(told.events, failed);
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
  EXPECT_EQ(told.events, failed);
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
  EXPECT_EQ(told.events, cancelled);
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
  EXPECT_EQ(told.events, done);
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
  EXPECT_EQ(told.events, done);
  EXPECT_EQ(told.thread, thread);
}

TEST_F(Request, WaitingEndsThemHere) {
  cache(5);
  server.reply(details_path, details_reply);
  const ZoxRequestOptions options = told.options();
  told = zox_request_details(5, &options);
  EXPECT_TRUE(zox_requests_wait(a_long_time));
  EXPECT_EQ(told.events, done);
  while (g_main_context_iteration(nullptr, FALSE) != FALSE)
    continue;
  EXPECT_EQ(told.events, done);
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
  EXPECT_EQ(told.events, cancelled);
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
  EXPECT_EQ(told.events, done);
  EXPECT_EQ(zox_request_code(told), ZOX_RESULT_SUCCESS);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 2U);
  ASSERT_FALSE(told.progress.empty());
  EXPECT_EQ(told.progress.back().dumps, 2);
  EXPECT_EQ(told.progress.back().step, ZOX_REQUEST_STEP_SAVING);
}

TEST_F(Request, AnUpdateThatFindsNothingNewSucceeds) {
  server.reply(update_path, available(""));
  const ZoxRequestOptions options = told.options();
  told = zox_request_update(&options);
  run_until_ended(told);
  EXPECT_EQ(told.events, done);
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
  EXPECT_EQ(told.events, cancelled);
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
  EXPECT_EQ(told.events, cancelled);
  EXPECT_EQ(second.events, done);
}

}  // namespace
}  // namespace velkor::test
