/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Fetches on threads of their own whose outcome is reported on the main loop. */
#include "services/background_job.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <velkor/zox_config.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_settings.h>
#include <velkor/zox_watchlist.h>

#include "http/workers.h"
#include "tests/support/filter_fixture.h"
#include "tests/support/fresh_process.h"
#include "tests/unit/services/service_fixture.h"
#include "tests/unit/services/thread_refusal.h"

namespace velkor::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAreArray;

/** Everything that callbacks report, on the thread that reports it. */
struct Reports {
  std::vector<std::string> lines;
  std::vector<std::thread::id> threads;

  void add(const std::string &line, char *message) {
    const OwnedText owner(message);
    lines.push_back(line + " " + text_of(message));
    threads.push_back(std::this_thread::get_id());
  }
};

gint report_details(ZoxErrorCode result, gint32 postId, char *message, gpointer reports) {
  static_cast<Reports *>(reports)->add(
      "details " + std::to_string(postId) + " " + std::to_string(result), message);
  return 0;
}

gint report_forum(ZoxErrorCode result, gint32 postId, gint32 lastCheck, char *message,
                  gpointer reports) {
  static_cast<Reports *>(reports)->add("forum " + std::to_string(postId) + " since " +
                                           std::to_string(lastCheck) + " " + std::to_string(result),
                                       message);
  return 0;
}

class Background : public ServiceTest {
protected:
  /** Runs the main loop until `count` callbacks have come, and then what is left to run. */
  void run_until(std::size_t count) const {
    while (reports.lines.size() < count)
      g_main_context_iteration(nullptr, TRUE);
    while (g_main_context_iteration(nullptr, FALSE) != FALSE)
      continue;
  }

  Reports reports;
};

constexpr const char *details_path = "/3.7.3/xml-posts.php";
constexpr const char *forum_path = "/3.7.3/xml-dyn.php";

TEST_F(Background, TellsDetailsOnTheMainLoop) {
  cache(5);
  server.reply(details_path, "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>");
  zox_eventinfo_fetch_async(5, report_details, &reports);
  EXPECT_THAT(reports.lines, IsEmpty());
  run_until(1);
  EXPECT_THAT(reports.lines, ElementsAre("details 5 0 (null)"));
  EXPECT_THAT(reports.threads, ElementsAre(std::this_thread::get_id()));
  EXPECT_EQ(text_of(cached(5)->ann), "a");
}

gint tell_failure(ZoxErrorCode, gint32, char *message, gpointer reports) {
  const ZoxHttpFailure *failure = zox_http_last_failure();
  static_cast<Reports *>(reports)->add(failure == nullptr ? "none" : failure->path, message);
  return 0;
}

TEST_F(Background, TellsWhyARequestFailed) {
  cache(5);
  cache(6);
  server.reply(details_path, "BAN");
  zox_eventinfo_fetch_async(5, tell_failure, &reports);
  run_until(1);
  server.reply(details_path, "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>");
  zox_eventinfo_fetch_async(6, tell_failure, &reports);
  run_until(2);
  EXPECT_THAT(reports.lines, ElementsAre(std::string(details_path) + " (null)", "none (null)"));
}

TEST_F(Background, TellsAForumOnTheMainLoop) {
  cache(5);
  server.reply(forum_path, "<Forum><Event Code=\"0\"><View>9</View></Event></Forum>");
  zox_events_forum_fetch_async(5, 77, report_forum, &reports);
  EXPECT_THAT(reports.lines, IsEmpty());
  run_until(1);
  EXPECT_THAT(reports.lines, ElementsAre("forum 5 since 77 0 (null)"));
  EXPECT_EQ(cached(5)->view, 9);
}

TEST_F(Background, HandsTheServersNoticeToTheCallback) {
  cache(5);
  server.reply(details_path, "MSGOnderhoud");
  server.reply(forum_path, "MSGDruk");
  zox_eventinfo_fetch_async(5, report_details, &reports);
  run_until(1);
  zox_events_forum_fetch_async(5, 0, report_forum, &reports);
  run_until(2);
  EXPECT_THAT(reports.lines, ElementsAre("details 5 29 Onderhoud", "forum 5 since 0 29 Druk"));
}

TEST_F(Background, TellsAtOnceWhenThereIsNoThread) {
  const ThreadRefusal refusal;
  zox_eventinfo_fetch_async(5, report_details, &reports);
  zox_events_forum_fetch_async(6, 7, report_forum, &reports);
  EXPECT_THAT(reports.lines,
              ElementsAre("details 5 1 geen thread", "forum 6 since 7 1 geen thread"));
  run_until(2);
  EXPECT_THAT(reports.lines, SizeIs(2));
  EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(Background, RunsManyFetchesAtOnceAndTellsEachOnce) {
  constexpr gint32 postings = 12;
  core->config->password = zox_string_new("wachtwoord");
  server.reply(details_path, "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>");
  server.reply(forum_path, "<Forum><Event Code=\"0\"><View>9</View></Event></Forum>");
  std::vector<std::string> expected;
  for (gint32 postId = 1; postId <= postings; ++postId) {
    cache(postId);
    expected.push_back("details " + std::to_string(postId) + " 0 (null)");
    expected.push_back("forum " + std::to_string(postId) + " since 3 0 (null)");
  }
  for (gint32 postId = 1; postId <= postings; ++postId) {
    zox_eventinfo_fetch_async(postId, report_details, &reports);
    zox_events_forum_fetch_async(postId, 3, report_forum, &reports);
  }
  run_until(expected.size());
  EXPECT_THAT(reports.lines, UnorderedElementsAreArray(expected));
  EXPECT_THAT(reports.threads, Each(std::this_thread::get_id()));
}

TEST_F(Background, FindsAndCountsManyPostingsAtOnce) {
  constexpr gint32 postings = 12;
  zox_filterlist_append_filter(core->filterlist, filter_of(1).get());
  zox_categories_init();
  server.reply("/3.7.3/xml-findpost.php",
               "<Post><PostID>1</PostID><Poster>p</Poster><Cat>1</Cat></Post>");
  server.reply(details_path, "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>");
  for (gint32 postId = 1; postId <= postings; ++postId)
    zox_eventinfo_fetch_async(postId + 100, report_details, &reports);
  run_until(postings);
  EXPECT_THAT(reports.lines, SizeIs(postings));
  EXPECT_THAT(reports.lines, Each(EndsWith(" 0 (null)")));
  EXPECT_EQ(text_of(cached(1)->ann), "a");
  EXPECT_EQ(zox_category_get_parent(1)->count, postings);
}

TEST_F(Background, LoadsWhileTheUserChangesFiltersSettingsAndTheWatchlist) {
  constexpr std::size_t postings = 12;
  constexpr gint32 first_found = 100;
  server.reply("/3.7.3/xml-findpost.php",
               "<Post><PostID>1</PostID><Poster>p</Poster><Cat>1</Cat></Post>");
  server.reply(details_path, "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>");
  for (std::size_t number = 0; number < postings; ++number)
    zox_eventinfo_fetch_async(first_found + static_cast<gint32>(number), report_details, &reports);
  const OwnedFilter filter = filter_of(1);
  GSList filters{.data = filter.get(), .next = nullptr};
  while (reports.lines.size() < postings) {
    zox_filterlist_set_filters(core->filterlist, &filters);
    zox_filterlist_set_filters(core->filterlist, nullptr);
    zox_settings_set("username", "andere", nullptr);
    zox_watchlist_add(1);
    zox_watchlist_remove(1);
    zox_categories_reset_counters();
    zox_config_load();
    g_main_context_iteration(nullptr, FALSE);
  }
  EXPECT_THAT(reports.lines, Each(EndsWith(" 0 (null)")));
  EXPECT_EQ(text_of(cached(1)->ann), "a");
}

TEST_F(Background, AWaitingFetchFailsWhenItMustStop) {
  cache(5);
  server.reply(details_path, StubReply{.claim_length = 100, .stall = true});
  zox_eventinfo_fetch_async(5, report_details, &reports);
  while (server.requests().empty())
    std::this_thread::yield();
  stop_workers();
  run_until(1);
  EXPECT_THAT(reports.lines, ElementsAre("details 5 1 (null)"));
}

TEST_F(Background, FetchesAgainAfterItHadToStop) {
  cache(5);
  stop_workers();
  server.reply(details_path, "<PostInfo><Post><Ann>a</Ann></Post></PostInfo>");
  zox_eventinfo_fetch_async(5, report_details, &reports);
  run_until(1);
  EXPECT_THAT(reports.lines, ElementsAre("details 5 0 (null)"));
}

/** Notes its life on a place that outlives it. */
class NotedJob final : public BackgroundJob {
public:
  explicit NotedJob(std::vector<std::string> &notes) : notes_(notes) {}
  ~NotedJob() override { notes_.push_back("freed"); }
  void run() noexcept override { notes_.push_back("run"); }
  void report() noexcept override { notes_.push_back("reported"); }

private:
  std::vector<std::string> &notes_;
};

TEST(BackgroundJob, RunsIsReportedAndIsFreed) {
  std::vector<std::string> notes;
  EXPECT_EQ(start_in_background(std::make_unique<NotedJob>(notes)), nullptr);
  g_main_context_iteration(nullptr, TRUE);
  EXPECT_THAT(notes, ElementsAre("run", "reported", "freed"));
  EXPECT_EQ(g_main_context_iteration(nullptr, FALSE), FALSE);
}

std::atomic<bool> job_ended = false;

/** Works until it is told to stop. */
class EndlessJob final : public BackgroundJob {
public:
  void run() noexcept override {
    while (!worker_must_stop())
      std::this_thread::yield();
    job_ended = true;
  }
  void report() noexcept override {}
};

/** Exits with a job at work and tells, when all other handlers have run, whether it had ended. */
void exit_with_a_job() {
  constexpr int status = 3;
  std::atexit([] { std::fputs(job_ended ? "ended\n" : "still at work\n", stderr); });
  start_in_background(std::make_unique<EndlessJob>());
  std::exit(status);
}

TEST(BackgroundJob, EndsBeforeTheProcess) {
  const Sandbox sandbox;
  const FreshProcess fresh(sandbox);
  EXPECT_EXIT(exit_with_a_job(), testing::ExitedWithCode(3), "^ended\n$");
}

TEST(BackgroundJob, IsFreedWithoutRunningWhenThereIsNoThread) {
  const ThreadRefusal refusal;
  std::vector<std::string> notes;
  const OwnedText error = start_in_background(std::make_unique<NotedJob>(notes));
  EXPECT_STREQ(error.get(), "geen thread");
  EXPECT_THAT(notes, ElementsAre("freed"));
}

}  // namespace
}  // namespace velkor::test
