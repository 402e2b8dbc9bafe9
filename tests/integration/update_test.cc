/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The update as a front end meets it: the shared library against a server of its own. */
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/velkor.h>

#include "tests/support/child_process.h"
#include "tests/support/sandbox.h"
#include "tests/support/server_process.h"

namespace velkor::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char *question = "/3.7.3/xml.php";
constexpr const char *dumps = "/3.7.3/dumps/";

using Options = std::vector<std::string>;
using Ids = std::set<gint32>;

struct ReleasePosting {
  void operator()(ZoxEvent *posting) const { zox_event_free(posting); }
};
using Posting = std::unique_ptr<ZoxEvent, ReleasePosting>;

Posting find(std::int64_t id) {
  return Posting(zox_eventlist_lookup_id(core->eventlist, static_cast<gint32>(id)));
}

gint note_id(gpointer, ZoxEvent *posting, gpointer ids) {
  static_cast<Ids *>(ids)->insert(posting->postId);
  return 0;
}

Ids listed() {
  Ids ids;
  zox_eventlist_foreach(core->eventlist, 0, 1, note_id, &ids);
  return ids;
}

gint note_count(gpointer counts) {
  static_cast<std::vector<guint32> *>(counts)->push_back(
      zox_eventlist_get_count(core->eventlist, 0));
  return 0;
}

/** Stops a transfer as soon as the server has decided not to answer it. */
gint stop_when_stalled(gint64, gint64, gpointer server) {
  for (const LoggedRequest &request : static_cast<ServerProcess *>(server)->requests())
    if (request.fault == "stall")
      return 1;
  return 0;
}

/** Everything that a failed update must leave as it was. */
struct State {
  Ids ids;
  gint64 last_check;
  gint64 prev_check;
  std::string postings;
  std::string settings;

  bool operator==(const State &) const = default;
};

class Update : public ::testing::Test {
protected:
  ~Update() override {
    stop_library();
    zox_file_free_lib_dir();
    zox_http_set_transfer_callback(nullptr, nullptr);
    zox_http_set_hosts(nullptr, nullptr);
  }

  /** Starts the server, and the library of a member whose settings have these lines as well. */
  void start(const Options &options = {"--postings", "50", "--chunk-size", "10"},
             const std::string &settings = {}) {
    server.emplace(options);
    zox_http_set_hosts(server->host().c_str(), server->dump_host().c_str());
    start_library(settings);
  }

  void start_library(const std::string &settings,
                     const char *plugins = ServerProcess::plugin_directory()) {
    std::filesystem::create_directories(sandbox.cache());
    write_file(sandbox.cache() / "velkor.conf", std::string("username=") + ServerProcess::user +
                                                    "\npassword=" + ServerProcess::password + "\n" +
                                                    settings);
    restart_library(plugins);
  }

  /** Starts the library from what is in the cache directory. */
  void restart_library(const char *plugins = ServerProcess::plugin_directory()) {
    zox_app_core_init(nullptr, sandbox.cache().c_str(), plugins, nullptr, 0, nullptr, nullptr);
  }

  static void stop_library() {
    GSList *mail = core == nullptr ? nullptr : core->mail;
    zox_app_core_cleanup();
    zox_mail_free(mail);
  }

  ZoxErrorCode update() {
    counts.clear();
    char *text = nullptr;
    const ZoxErrorCode code = zox_events_fetch(nullptr, nullptr, note_count, &text, &counts);
    message = text == nullptr ? "" : text;
    g_free(text);
    return code;
  }

  /** Fetches everything; a second update then has removed what is too old to be kept. */
  void fetch_all() {
    ASSERT_EQ(update(), 0U);
    ASSERT_EQ(update(), 5U);
    ASSERT_THAT(listed(), Not(IsEmpty()));
  }

  [[nodiscard]] State state() const {
    return {listed(), core->config->lastCheck, core->config->prevCheck,
            read_file(sandbox.cache() / "velkor.posts.gz"),
            read_file(sandbox.cache() / "velkor.conf")};
  }

  Sandbox sandbox;
  EnvironmentVariable display{"DISPLAY", std::nullopt};
  EnvironmentVariable runtime{"XDG_RUNTIME_DIR", sandbox.home().string()};
  EnvironmentVariable bus{"DBUS_SESSION_BUS_ADDRESS",
                          "unix:path=" + (sandbox.home() / "absent").string()};
  std::optional<ServerProcess> server;
  std::vector<guint32> counts;
  std::string message;
};

TEST_F(Update, FetchesEverythingTheFirstTime) {
  start();
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(message, "");
  ASSERT_THAT(counts, SizeIs(2));
  EXPECT_EQ(counts[0], 50U);
  EXPECT_EQ(counts[1], listed().size());
  EXPECT_GT(core->config->lastCheck, 0);
  EXPECT_EQ(core->config->prevCheck, 0);
  EXPECT_EQ(g_slist_length(core->groups), 320U);
  EXPECT_GT(core->config->ledenCount, 0U);
}

TEST_F(Update, BringsNewChangedAndDeletedPostings) {
  start();
  fetch_all();
  const Ids before = listed();
  const gint64 first_check = core->config->lastCheck;
  const ChangedData changed =
      server->advance({.added = 4, .updated = 3, .deleted = 2, .removed = 2, .newsgroups = 1});
  EXPECT_EQ(update(), 0U);
  const Ids after = listed();
  EXPECT_THAT(after, IsSupersetOf(before));
  for (const std::int64_t id : changed.added) {
    EXPECT_FALSE(before.contains(static_cast<gint32>(id)));
    ASSERT_TRUE(find(id)) << id;
    EXPECT_EQ(find(id)->stamp, changed.stamp);
  }
  for (const std::int64_t id : changed.updated) {
    ASSERT_TRUE(find(id)) << id;
    EXPECT_EQ(find(id)->updated, changed.stamp);
  }
  for (const std::int64_t id : changed.deleted) {
    ASSERT_TRUE(find(id)) << id;
    EXPECT_EQ(find(id)->status, -2);
  }
  for (const std::int64_t id : changed.removed) {
    ASSERT_TRUE(find(id)) << id;
    EXPECT_EQ(find(id)->status, -3);
  }
  EXPECT_GE(core->config->lastCheck, changed.stamp);
  EXPECT_EQ(core->config->prevCheck, first_check);
  EXPECT_EQ(g_slist_length(core->groups), 321U);
}

TEST_F(Update, BringsPostingsAsTheyStandOnTheServer) {
  start();
  fetch_all();
  const std::int64_t id = server->add_posting({{"Title", "Één & <ander> ]]> \"x\""},
                                               {"Poster", "plaatser"},
                                               {"Cat", "2"},
                                               {"Tags", "|a3|b1|"},
                                               {"Groups", "|7|40|"},
                                               {"Link", "www.zox.example/?a=1&b=2"}});
  ASSERT_EQ(update(), 0U);
  {
    const Posting posting = find(id);
    ASSERT_TRUE(posting);
    EXPECT_STREQ(posting->title->str, "Één & <ander> ]]> \"x\"");
    EXPECT_STREQ(posting->link->str, "www.zox.example/?a=1&b=2");
    EXPECT_EQ(posting->cat, 2);
    EXPECT_EQ(posting->sCat, 3);
    ZoxString *groups = zox_splitted_list_concat(posting->groups);
    EXPECT_STREQ(groups->str, "|7|40|");
    g_string_free(groups, TRUE);
  }
  server->change_posting(id, {{"Title", "Anders"}, {"Status", "1"}});
  ASSERT_EQ(update(), 0U);
  const Posting changed = find(id);
  ASSERT_TRUE(changed);
  EXPECT_STREQ(changed->title->str, "Anders");
  EXPECT_EQ(changed->status, 1);
}

TEST_F(Update, IsThereAgainAfterARestart) {
  start();
  fetch_all();
  const Ids ids = listed();
  const gint64 check = core->config->lastCheck;
  stop_library();
  restart_library();
  EXPECT_EQ(listed(), ids);
  EXPECT_EQ(core->config->lastCheck, check);
  EXPECT_EQ(g_slist_length(core->groups), 320U);
  EXPECT_EQ(update(), 5U);
}

const Options many_dumps{"--postings", "45", "--chunk-size", "10", "--chunks-per-reply", "2"};

TEST_F(Update, TakesOneReplysDumpsAtATime) {
  start(many_dumps);
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(counts.at(0), 20U);
  EXPECT_THAT(server->requests(question), SizeIs(1));
}

TEST_F(Update, TakesEveryDumpWhenRecursive) {
  start(many_dumps, "recursiveUpdate=1\n");
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(counts.at(0), 45U);
  EXPECT_THAT(server->requests(question), SizeIs(4));
  server->forget_requests();
  EXPECT_EQ(update(), 5U);
  EXPECT_THAT(server->requests(question), SizeIs(1));
}

TEST_F(Update, NeverSendsCredentialsToTheStaticHost) {
  start({"--postings", "30", "--chunk-size", "10", "--static-port", "0"});
  ASSERT_EQ(update(), 0U);
  std::size_t downloads = 0;
  for (const LoggedRequest &request : server->requests()) {
    const bool is_dump = request.path.starts_with(dumps);
    EXPECT_EQ(request.credentials, !is_dump) << request.path;
    EXPECT_EQ(request.listener, is_dump ? "dumps" : "main") << request.path;
    downloads += is_dump ? 1 : 0;
  }
  EXPECT_EQ(downloads, 3U);
}

class UpdateAccess : public Update {};

TEST_F(UpdateAccess, AWrongPasswordIsRefused) {
  start({"--postings", "5"}, "password=fout\n");
  EXPECT_EQ(update(), 2U);
  EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(UpdateAccess, WithoutAPasswordTheServerRefuses) {
  start({"--postings", "5"}, "password=\n");
  EXPECT_EQ(update(), 2U);
  EXPECT_FALSE(server->requests(question).at(0).credentials);
}

TEST_F(UpdateAccess, TheBannedAreToldSo) {
  start({"--postings", "5"});
  server->add_account(ServerProcess::user, ServerProcess::password, true);
  EXPECT_EQ(update(), 3U);
}

TEST_F(UpdateAccess, AServerThatIsGoneRefusesTheConnection) {
  start();
  fetch_all();
  const State before = state();
  server->stop();
  EXPECT_EQ(update(), 16U);
  EXPECT_EQ(state(), before);
}

TEST_F(UpdateAccess, AnotherRuleNeedsOnlyAnotherPlugin) {
  start({"--postings", "5", "--auth-rule", "plain"});
  EXPECT_EQ(update(), 2U);
  zox_file_set_lib_dir(VELKOR_PLAIN_PLUGIN_DIRECTORY);
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(counts.at(0), 5U);
}

TEST_F(UpdateAccess, WithoutAPluginNothingIsAsked) {
  start({"--postings", "5"});
  zox_file_set_lib_dir(sandbox.home().c_str());
  EXPECT_EQ(update(), 8U);
  EXPECT_THAT(server->requests(), IsEmpty());
}

/** The hosts exist only for the proxy. */
class UpdateThroughProxy : public Update {
protected:
  static Options options(const Options &more = {}) {
    Options options{"--postings", "20", "--chunk-size", "10"};
    options.insert(options.end(), more.begin(), more.end());
    return options;
  }

  /** Starts the server, and the library behind it as a proxy. */
  void start_behind_proxy(const Options &options, const std::string &settings = {}) {
    server.emplace(options);
    zox_http_set_hosts("www.zox.invalid", "static.zox.invalid");
    start_library("proxyHost=127.0.0.1\nproxyPort=" + server->port() + "\n" + settings);
  }

  Options guarded() {
    write_file(sandbox.home() / "proxy", "poort\n");
    return options(
        {"--proxy-user", "wachter", "--proxy-password-file", (sandbox.home() / "proxy").string()});
  }

  [[nodiscard]] std::vector<std::string> hosts_asked() {
    std::vector<std::string> hosts;
    for (const LoggedRequest &request : server->requests())
      hosts.push_back(request.host);
    return hosts;
  }
};

TEST_F(UpdateThroughProxy, ReachesBothHosts) {
  start_behind_proxy(options());
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(counts.at(0), 20U);
  EXPECT_THAT(hosts_asked(),
              ElementsAre("www.zox.invalid", "static.zox.invalid", "static.zox.invalid"));
  const auto requests = server->requests();
  EXPECT_THAT(requests, Each(Field(&LoggedRequest::proxied, true)));
  EXPECT_THAT(requests, Each(Field(&LoggedRequest::proxyCredentials, false)));
  EXPECT_TRUE(requests[0].credentials);
  EXPECT_FALSE(requests[1].credentials);
}

TEST_F(UpdateThroughProxy, IdentifiesItselfToTheProxy) {
  start_behind_proxy(guarded(), "proxyUser=wachter\nproxyPassword=poort\n");
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(counts.at(0), 20U);
  EXPECT_THAT(server->requests(), Each(Field(&LoggedRequest::proxyCredentials, true)));
}

TEST_F(UpdateThroughProxy, IsNotLetThroughWithoutTheProxysPassword) {
  for (const char *settings :
       {"", "proxyUser=wachter\n", "proxyUser=wachter\nproxyPassword=fout\n"}) {
    start_behind_proxy(guarded(), settings);
    EXPECT_EQ(update(), 11U) << settings;
    EXPECT_THAT(server->requests(), Each(Field(&LoggedRequest::status, 407)));
    stop_library();
  }
}

TEST_F(UpdateThroughProxy, NeedsItsPortToo) {
  start(options(), "proxyHost=proxy.invalid\n");
  EXPECT_EQ(update(), 0U);
  EXPECT_THAT(server->requests(), Each(Field(&LoggedRequest::proxied, false)));
}

/** What comes of a fault of the question, and of one of a dump. */
struct Expected {
  ZoxErrorCode of_question;
  ZoxErrorCode of_dump;
};

/** A fault that the update does not mind. */
constexpr ZoxErrorCode harmless = 0;

const std::map<std::string, Expected> expected_codes{
    {"unauth", {2, 11}},
    {"ban", {3, 11}},
    {"database", {4, 11}},
    {"update", {27, 11}},
    {"message", {29, 11}},
    {"close", {1, 1}},
    {"reset", {17, 1}},
    {"stall", {1, 1}},
    {"drop", {1, 1}},
    {"drip", {harmless, harmless}},
    {"length-short", {11, 1}},
    {"length-long", {1, 1}},
    {"gzip-truncated", {11, 1}},
    {"gzip-corrupt", {1, 1}},
    {"gzip-missing", {1, 11}},
    {"xml-malformed", {11, 11}},
    {"xml-root", {11, 11}},
    {"xml-bomb", {11, 11}},
    {"empty", {13, 11}},
    {"redirect", {11, 11}},
    {"error", {11, 11}},
};

class FaultyUpdate : public Update {
protected:
  /** What comes of an update that prints what it cannot use, never a secret, and may meet silence.
   */
  ZoxErrorCode faulty_update() {
    zox_http_set_transfer_callback(stop_when_stalled, &*server);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const ZoxErrorCode code = update();
    const std::string printed =
        testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr();
    EXPECT_THAT(printed, Not(HasSubstr(ServerProcess::password)));
    EXPECT_THAT(printed, Not(HasSubstr(std::string(ServerProcess::user) + ":")));
    zox_http_set_transfer_callback(nullptr, nullptr);
    return code;
  }

  /** One update with the fault, and one without that makes good for it. */
  void expect_code(const std::string &path, const std::string &kind, ZoxErrorCode code) {
    SCOPED_TRACE(kind + " of " + path);
    const ChangedData changed = server->advance({.added = 12});
    const State before = state();
    server->forget_requests();
    server->fault(path, kind, 1, kind == "drip" ? "1000000" : "");
    EXPECT_EQ(faulty_update(), code);
    server->clear_faults();
    if (code != harmless) {
      EXPECT_EQ(state(), before);
      EXPECT_THAT(counts, IsEmpty());
      EXPECT_EQ(message, code == 29 ? "Onderhoud" : code == 11 ? message : "");
      EXPECT_EQ(update(), 0U);
    }
    for (const std::int64_t id : changed.added)
      EXPECT_TRUE(find(id)) << id;
  }

  void expect_codes(const std::string &path, ZoxErrorCode Expected::*place) {
    start({"--postings", "30", "--chunk-size", "10"});
    fetch_all();
    for (const auto &[kind, codes] : expected_codes)
      expect_code(path, kind, codes.*place);
  }
};

TEST_F(FaultyUpdate, EveryFaultOfTheServerIsMet) {
  ChildProcess listing({ZOX_SERVER_PROGRAM, "--list-faults"});
  std::set<std::string> kinds;
  while (const auto line = listing.read_line())
    kinds.insert(line->substr(0, line->find(' ')));
  std::set<std::string> expected;
  for (const auto &[kind, codes] : expected_codes)
    expected.insert(kind);
  EXPECT_EQ(kinds, expected);
}

TEST_F(FaultyUpdate, AFaultyAnswerToTheQuestionChangesNothing) {
  expect_codes(question, &Expected::of_question);
}

TEST_F(FaultyUpdate, AFaultyDumpChangesNothing) {
  expect_codes(dumps, &Expected::of_dump);
}

TEST_F(FaultyUpdate, AFaultyLastDumpDiscardsTheEarlierOnes) {
  start();
  ASSERT_EQ(update(), 0U);
  const std::string last = server->requests().back().path;
  stop_library();
  std::filesystem::remove_all(sandbox.cache());
  start_library("");
  server->forget_requests();
  server->fault(last, "gzip-corrupt", 1);
  EXPECT_EQ(update(), 1U);
  EXPECT_THAT(server->requests(), SizeIs(6));
  EXPECT_THAT(listed(), IsEmpty());
  EXPECT_EQ(core->config->lastCheck, 0);
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(counts.at(0), 50U);
}

TEST_F(FaultyUpdate, AFaultOfALaterQuestionChangesNothing) {
  start(many_dumps, "recursiveUpdate=1\n");
  fetch_all();
  server->advance({.added = 30});
  const State before = state();
  server->forget_requests();
  // The first question is answered slowly but well, the second one not at all.
  server->fault(question, "drip", 1, "1000000");
  server->fault(question, "reset", 1);
  EXPECT_EQ(update(), 17U);
  EXPECT_THAT(server->requests(), SizeIs(2));
  EXPECT_EQ(state(), before);
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(listed().size(), before.ids.size() + 30);
}

}  // namespace
}  // namespace velkor::test
