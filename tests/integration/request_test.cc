/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Requests as a window meets them: the shared library against a server of its own. */
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/velkor.h>

#include "tests/support/sandbox.h"
#include "tests/support/server_process.h"

namespace velkor::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr const char *dumps = "/3.7.3/dumps/";
constexpr const char *details = "/3.7.3/xml-posts.php";

struct ReleasePosting {
  void operator()(ZoxEvent *posting) const { zox_event_free(posting); }
};
using Posting = std::unique_ptr<ZoxEvent, ReleasePosting>;

struct ReleaseRequest {
  void operator()(ZoxRequest *request) const { zox_request_unref(request); }
};
using Request = std::unique_ptr<ZoxRequest, ReleaseRequest>;

void note_state(ZoxRequest *request, gpointer states) {
  static_cast<std::vector<ZoxRequestState> *>(states)->push_back(zox_request_state(request));
}

class Requests : public ::testing::Test {
protected:
  ~Requests() override {
    zox_app_core_close();
    zox_http_set_hosts(nullptr, nullptr);
  }

  /** Starts the server, and the library of a member. */
  void start(const std::vector<std::string> &options = {"--postings", "20", "--chunk-size", "10"}) {
    server.emplace(options);
    zox_http_set_hosts(server->host().c_str(), server->dump_host().c_str());
    std::filesystem::create_directories(sandbox.cache());
    write_file(sandbox.cache() / "velkor.conf", std::string("username=") + ServerProcess::user +
                                                    "\npassword=" + ServerProcess::password + "\n");
    open(ZOX_CORE_ALL & ~static_cast<guint32>(ZOX_CORE_BUS));
  }

  void open(guint32 parts) {
    const std::string cache = sandbox.cache().string();
    const ZoxCoreOptions core_options{.dataDir = nullptr,
                                      .cacheDir = cache.c_str(),
                                      .libDir = ServerProcess::plugin_directory(),
                                      .parts = parts,
                                      .readOnly = 0,
                                      .dbusArgument = nullptr,
                                      .isGui = 0};
    ASSERT_EQ(zox_app_core_open(&core_options, nullptr), ZOX_CORE_OPENED);
  }

  const ZoxRequestOptions *options() {
    told = {.context = nullptr,
            .progress = nullptr,
            .done = note_state,
            .userData = &states,
            .destroy = nullptr};
    return &told;
  }

  void run_until(std::size_t count) {
    while (states.size() < count)
      g_main_context_iteration(nullptr, TRUE);
  }

  void update() {
    const Request request(zox_request_update(options()));
    run_until(states.size() + 1);
  }

  /** Waits until the server has committed a fault. */
  void wait_for_a_fault() {
    const auto is_faulty = [](const LoggedRequest &request) { return !request.fault.empty(); };
    while (!std::ranges::any_of(server->requests(), is_faulty))
      std::this_thread::yield();
  }

  static std::vector<gint32> listed() {
    guint32 count = 0;
    gint32 *ids = zox_eventlist_select(core->eventlist, nullptr, &count);
    std::vector<gint32> found(ids, ids + count);
    g_free(ids);
    return found;
  }

  Sandbox sandbox;
  std::optional<ServerProcess> server;
  std::vector<ZoxRequestState> states;
  ZoxRequestOptions told{};
};

TEST_F(Requests, DetailsAndReactionsOfManyPostingsAllArrive) {
  start();
  update();
  std::vector<Request> requests;
  const std::vector<gint32> ids = listed();
  ASSERT_THAT(ids, SizeIs(20));
  states.clear();
  for (const gint32 id : ids) {
    requests.emplace_back(zox_request_details(id, options()));
    requests.emplace_back(zox_request_forum(id, 0, options()));
  }
  run_until(requests.size());
  EXPECT_THAT(states, Each(ZOX_REQUEST_DONE));
  for (const gint32 id : ids) {
    const Posting posting(zox_eventlist_lookup_id(core->eventlist, id));
    EXPECT_NE(posting->forum, nullptr) << id;
    EXPECT_NE(posting->des, nullptr) << id;
  }
}

TEST_F(Requests, AnUpdateTellsWhatIsNew) {
  start();
  update();
  const std::vector<gint32> before = listed();
  const ChangedData changed = server->advance({.added = 2, .deleted = 1, .seconds = 60});
  states.clear();
  const Request request(zox_request_update(options()));
  run_until(1);
  ASSERT_THAT(states, ElementsAre(ZOX_REQUEST_DONE));
  const auto ids = [&request](ZoxUpdateGroup group) {
    guint32 count = 0;
    const gint32 *found =
        zox_update_result_ids(zox_request_update_result(request.get()), group, &count);
    return std::vector<std::int64_t>(found, found + count);
  };
  EXPECT_THAT(ids(ZOX_UPDATE_NEW), ::testing::UnorderedElementsAreArray(changed.added));
  EXPECT_THAT(ids(ZOX_UPDATE_REMOVED), ::testing::UnorderedElementsAreArray(changed.deleted));
}

TEST_F(Requests, TheCoreMayBeClosedWhileAnUpdateRuns) {
  start();
  update();
  update();  // which removes what is too old
  const std::string postings = read_file(sandbox.cache() / "velkor.posts.gz");
  server->advance({.added = 2, .seconds = 60});
  server->fault(dumps, "stall");
  states.clear();
  const Request request(zox_request_update(options()));
  wait_for_a_fault();
  zox_app_core_close();
  EXPECT_THAT(states, ElementsAre(ZOX_REQUEST_CANCELLED));
  EXPECT_EQ(zox_requests_count(), 0U);
  EXPECT_TRUE(read_file(sandbox.cache() / "velkor.posts.gz") == postings);
}

TEST_F(Requests, TheCoreMayBeCleanedUpWhileDetailsAreFetched) {
  start();
  update();
  server->fault(details, "stall");
  states.clear();
  std::vector<Request> requests;
  for (const gint32 id : listed())
    requests.emplace_back(zox_request_details(id, options()));
  wait_for_a_fault();
  GSList *mail = core->mail;
  zox_app_core_cleanup();
  zox_mail_free(mail);
  EXPECT_THAT(states, SizeIs(requests.size()));
  EXPECT_THAT(states, Each(ZOX_REQUEST_CANCELLED));
}

TEST_F(Requests, AnUpdateIsCancelledInTheMiddleOfADump) {
  start();
  server->fault(dumps, "drip", 0, "300");
  const Request request(zox_request_update(options()));
  ZoxRequestProgress progress{};
  while (progress.step != ZOX_REQUEST_STEP_DOWNLOAD || progress.received == 0)
    zox_request_progress(request.get(), &progress);
  EXPECT_EQ(progress.dump, 1);
  EXPECT_EQ(progress.dumps, 2);
  zox_request_cancel(request.get());
  run_until(1);
  EXPECT_THAT(states, ElementsAre(ZOX_REQUEST_CANCELLED));
  EXPECT_EQ(core->config->lastCheck, 0);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 0U);
  server->clear_faults();
  update();
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 20U);
}

TEST_F(Requests, ThePostingsMayBeLoadedAfterTheStart) {
  start();
  update();
  const std::vector<gint32> ids = listed();
  zox_app_core_close();
  open(ZOX_CORE_SETTINGS);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 0U);
  EXPECT_EQ(core->tags, nullptr);
  states.clear();
  const Request request(
      zox_request_load(ZOX_CORE_FILTERS | ZOX_CORE_TABLES | ZOX_CORE_POSTINGS, options()));
  EXPECT_NE(core->tags, nullptr);
  run_until(1);
  EXPECT_THAT(states, ElementsAre(ZOX_REQUEST_DONE));
  EXPECT_EQ(listed(), ids);
}

}  // namespace
}  // namespace velkor::test
