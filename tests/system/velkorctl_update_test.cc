/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl update against the stand-in server. */
#include <csignal>
#include <thread>

#include <sys/file.h>

#include "tests/support/bus_name_owner.h"
#include "tests/support/private_bus.h"
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char *question = "/3.7.3/xml.php";
constexpr const char *dumps = "/3.7.3/dumps/";

class VelkorctlUpdate : public ServerVelkorctlTest {
protected:
  using ServerVelkorctlTest::ServerVelkorctlTest;

  [[nodiscard]] std::size_t listed() const {
    return count_objects(run({"list", "--format", "json"}).out);
  }
  [[nodiscard]] std::string setting(const std::string &key) const {
    return run({"config", "get", key}).out;
  }
};

TEST_F(VelkorctlUpdate, FetchesEverythingTheFirstTime) {
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr("velkorctl: dump 1/5: "));
  EXPECT_THAT(outcome.err, HasSubstr("velkorctl: dump 5/5: "));
  EXPECT_THAT(outcome.err, HasSubstr("50 postings received"));
  EXPECT_GT(listed(), 0U);
}

TEST_F(VelkorctlUpdate, FetchesOnlyWhatIsNewTheNextTime) {
  ASSERT_EQ(run({"update"}).status, 0);
  const std::size_t before = listed();
  server.advance({.added = 3, .seconds = 60});
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("3 postings received"));
  EXPECT_EQ(listed(), before + 3);
}

TEST_F(VelkorctlUpdate, NothingNewIsAFailureOnlyOnRequest) {
  ASSERT_EQ(run({"update"}).status, 0);
  const ProcessResult quiet = run({"update"});
  EXPECT_EQ(quiet.status, 0);
  EXPECT_EQ(quiet.err,
            "velkorctl: Geen nieuwe ZOX postings sinds laatste update [nothing new since "
            "the last update]\n");
  EXPECT_EQ(run({"update", "--exit-code"}).status, 5);
}

TEST_F(VelkorctlUpdate, WithoutAnAccountNoRequestIsSent) {
  settings("username=demo\n");
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "velkorctl: no password is set; see velkorctl config set\n");
  settings("password=x\n");
  EXPECT_THAT(run({"update"}).err, HasSubstr("no username is set"));
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(VelkorctlUpdate, AWrongPasswordIsReportedInTheServicesWords) {
  settings("username=demo\npassword=wrong\n");
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "velkorctl: Ongeldige username/wachtwoord opgegeven [the user name or the "
                         "password is wrong] (asking what is new, " +
                             server.host() + ")\n");
}

TEST_F(VelkorctlUpdate, AServerNoticeCannotControlTheTerminal) {
  server.fault(question, "message", 1, "Onder\033[2Jhoud");
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "velkorctl: Servermededeling ontvangen: Onder\uFFFD[2Jhoud [a notice of "
                         "the server] (asking what is new, " +
                             server.host() + ")\n");
}

TEST_F(VelkorctlUpdate, AnUnreachableServerIsAFailure) {
  server.stop();
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, StartsWith("velkorctl: Connection refused (asking what is new, " +
                                      server.host() + ": "));
}

TEST_F(VelkorctlUpdate, AFailedDumpChangesNothing) {
  server.fault(std::string(dumps), "gzip-corrupt", 1);
  EXPECT_EQ(run({"update"}).status, 1);
  EXPECT_EQ(setting("lastCheck"), "0\n");
  const ProcessResult again = run({"update"});
  EXPECT_EQ(again.status, 0);
  EXPECT_THAT(again.err, HasSubstr("50 postings received"));
}

TEST_F(VelkorctlUpdate, LibraryOutputStaysOffStandardOutput) {
  server.fault(std::string(dumps), "xml-malformed", 2);
  const ProcessResult quiet = run({"update"});
  EXPECT_EQ(quiet.status, 1);
  EXPECT_EQ(quiet.out, "");
  EXPECT_THAT(quiet.err, Not(HasSubstr("trace: ")));
  const ProcessResult traced = run({"update", "--trace"});
  EXPECT_EQ(traced.out, "");
  EXPECT_THAT(traced.err, HasSubstr("velkorctl: trace: zox_events_parse(): buffer = "));
}

class VelkorctlInterruptedUpdate : public VelkorctlUpdate,
                                   public ::testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Each, VelkorctlInterruptedUpdate,
                         ::testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_P(VelkorctlInterruptedUpdate, EndsTheTransferWithoutLosses) {
  ASSERT_EQ(run({"update"}).status, 0);
  const std::string before = setting("lastCheck");
  const std::size_t count = listed();
  server.advance({.added = 3, .seconds = 60});
  server.fault(std::string(dumps), "stall", 1);
  server.forget_requests();
  ChildProcess update(command({"update"}), {.capture_errors = true});
  while (server.requests().size() < 2)
    std::this_thread::yield();
  update.send_signal(GetParam());
  const ProcessResult outcome = update.finish();
  EXPECT_EQ(outcome.status, 130);
  EXPECT_THAT(outcome.err, HasSubstr("velkorctl: interrupted\n"));
  EXPECT_EQ(setting("lastCheck"), before);
  EXPECT_EQ(listed(), count);
  EXPECT_EQ(run({"update"}).status, 0);
  EXPECT_EQ(listed(), count + 3);
}

TEST_F(VelkorctlUpdate, ShowsAProgressBarOnATerminal) {
  ChildProcess update(command({"update"}), {.terminal_columns = 60});
  const ProcessResult outcome = update.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("\r\033[K["));
  EXPECT_THAT(outcome.out, HasSubstr("dump 5/5"));
  EXPECT_THAT(outcome.out, Not(HasSubstr("velkorctl: dump")));
}

class VelkorctlRecursiveUpdate : public VelkorctlUpdate {
protected:
  VelkorctlRecursiveUpdate() : VelkorctlUpdate(Words{"--chunks-per-reply", "1"}) {}
};

TEST_F(VelkorctlRecursiveUpdate, ContinuesUntilTheServerHasNoMore) {
  const ProcessResult outcome = run({"update", "--recursive"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("50 postings received"));
  EXPECT_EQ(setting("recursiveUpdate"), "0\n");
}

TEST_F(VelkorctlRecursiveUpdate, BringsOnePartWithoutTheOption) {
  EXPECT_THAT(run({"update"}).err, HasSubstr("10 postings received"));
  // The first update asks a second time, only to tell how much remains.
  EXPECT_EQ(server.requests(question).size(), 2U);
  EXPECT_THAT(run({"update"}).err, HasSubstr("10 postings received"));
  EXPECT_EQ(server.requests(question).size(), 3U);
}

TEST_F(VelkorctlRecursiveUpdate, AFirstUpdateTellsWhatRemains) {
  EXPECT_THAT(run({"update"}).err,
              HasSubstr("velkorctl: at least 1 more dump waits on the server; velkorctl update "
                        "--recursive fetches everything\n"));
  EXPECT_THAT(run({"update"}).err, Not(HasSubstr("on the server")));
}

/** The postings of event() are years old. */
class VelkorctlAgeing : public VelkorctlUpdate {
protected:
  VelkorctlAgeing() {
    std::string events;
    for (int id = 1001; id <= 1020; ++id)
      events += event(id, "Old");
    cache_postings(events);
  }
};

TEST_F(VelkorctlAgeing, TellsHowManyPostingsAgedOut) {
  cache_postings(event(1001, "Old") + event(1002, "Older"));
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("velkorctl: 2 postings older than 49 days removed from the "
                                     "cache (setting verwijderPostsNaXDagen)\n"));
  EXPECT_THAT(run({"update"}).err, Not(HasSubstr("removed")));
}

TEST_F(VelkorctlAgeing, AListIsNotEmptiedWithoutConsent) {
  const std::string before = read_file(cached("velkor.posts.gz"));
  for (const Words &words : {Words{"update"}, Words{"cache", "resync"}}) {
    const ProcessResult refused = run(words);
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr("all 20 cached postings are older than 49 days"));
    EXPECT_EQ(read_file(cached("velkor.posts.gz")), before);
  }
  const ProcessResult agreed = run({"update", "--yes"});
  EXPECT_EQ(agreed.status, 0) << agreed.err;
  EXPECT_THAT(agreed.err, HasSubstr("20 postings older than 49 days removed"));
}

TEST_F(VelkorctlAgeing, TheWatchlistKeepsPostings) {
  settings("username=demo\npassword=demo-geheim\nverwijderPostsNaXDagen=6\nwatchlist=1001\n");
  EXPECT_THAT(run({"update"}).err, HasSubstr("all 19 cached postings"));
  EXPECT_THAT(run({"update", "--yes"}).err, HasSubstr("19 postings older"));
  EXPECT_EQ(run({"show", "1001", "--offline"}).status, 0);
}

class VelkorctlUpdateFiles : public VelkorctlUpdate {};

TEST_F(VelkorctlUpdateFiles, ACacheDirectoryThatCannotBeCreatedIsReported) {
  const ProcessResult outcome = run({"--cache-dir", cached("velkor.conf") / "x", "update"});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, StartsWith("velkorctl: "));
}

TEST_F(VelkorctlUpdateFiles, AfterAFullDiskTheUpdateIsRepeated) {
  const ProcessResult outcome = run({"update"}, {.file_size_limit = 3000});
  EXPECT_NE(outcome.status, 0);
  EXPECT_EQ(setting("lastCheck"), "0\n");
  const ProcessResult again = run({"update"});
  EXPECT_EQ(again.status, 0);
  EXPECT_THAT(again.err, HasSubstr("50 postings received"));
}

TEST_F(VelkorctlUpdateFiles, PostingsThatCannotBeSavedAreReported) {
  std::filesystem::create_directory(cached("velkor.posts.gz"));
  const ProcessResult outcome = run({"cache", "resync"});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, HasSubstr("velkorctl: cannot write " +
                                     cached("velkor.posts.gz").string() + ": Is a directory; "));
  EXPECT_EQ(setting("lastCheck"), "0\n");
}

TEST_F(VelkorctlUpdateFiles, AnUnreadableCacheIsReportedAtOnceAndBackedUp) {
  ASSERT_EQ(run({"update"}).status, 0);
  write_file(cached("velkor.posts.gz"), "this is not gzip");
  const ProcessResult listing = run({"list"});
  EXPECT_EQ(listing.status, 6);
  EXPECT_THAT(listing.err, HasSubstr("cannot read " + cached("velkor.posts.gz").string()));
  server.advance({.added = 3, .seconds = 60});
  const std::set<std::string> before = cached_names();
  const ProcessResult refused = run({"update"});
  EXPECT_EQ(refused.status, 6);
  for (const char *words : {"cannot read ", "velkorctl cache resync", "velkorctl cache restore"})
    EXPECT_THAT(refused.err, HasSubstr(words));
  EXPECT_EQ(cached_names(), before);
  const ProcessResult outcome = run({"cache", "resync"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("warning: cannot read " + cached("velkor.posts.gz").string()));
  EXPECT_THAT(outcome.err, HasSubstr("53 postings received"));
  EXPECT_THAT(cached_names(), Contains(StartsWith("velkor.posts.gz.onleesbaar-")));
}

TEST_F(VelkorctlUpdateFiles, OnlyOneCommandWritesAtATime) {
  const int lock = open(cached("velkorctl.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  const ProcessResult refused = run({"update"});
  EXPECT_EQ(refused.status, 4);
  EXPECT_THAT(refused.err, HasSubstr("another velkorctl"));
  EXPECT_EQ(run({"list"}).status, 0);
  ChildProcess waiting(command({"--wait", "600", "update"}), {.capture_errors = true});
  close(lock);
  EXPECT_EQ(waiting.finish().status, 0);
}

TEST_F(VelkorctlUpdateFiles, WhileTheFrontEndRunsOnlyReadingWorks) {
  PrivateBus bus;
  BusNameOwner front_end;
  const ProcessResult refused = run({"update"});
  EXPECT_EQ(refused.status, 4);
  EXPECT_THAT(refused.err, HasSubstr("Velkor is running"));
  EXPECT_EQ(run({"config", "set", "trayIcon", "0"}).status, 4);
  EXPECT_EQ(run({"groups", "--fetch"}).status, 4);
  EXPECT_EQ(run({"list"}).status, 0);
  EXPECT_EQ(run({"config", "list"}).status, 0);
  EXPECT_THAT(server.requests(), IsEmpty());
  EXPECT_THAT(front_end.calls(), IsEmpty());
}

}  // namespace
}  // namespace velkor::test
