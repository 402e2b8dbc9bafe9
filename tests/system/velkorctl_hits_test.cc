/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl update --exec and --notify: who is told of watcher hits. */
#include "tests/support/bus_name_owner.h"
#include "tests/support/private_bus.h"
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

/** A cache that is up to date, two watchers, and new postings for them on the server. */
class VelkorctlHits : public ServerVelkorctlTest {
protected:
  VelkorctlHits() {
    EXPECT_EQ(run({"update"}).status, 0);
    EXPECT_EQ(output({"watchers", "add", "Walvis", "R&B"}), "");
  }

  void add_hits() {
    add("Walvis <een>");
    add("Walvis twee");
    add("Het beste van R&B");
    add("iets anders");
  }

  [[nodiscard]] ProcessResult update_for(const std::string &command) const {
    return run({"update", "--exec", command});
  }
  /** What a command that keeps its input was handed. */
  [[nodiscard]] std::string handed() const { return read_file(sandbox.home() / "handed"); }
  [[nodiscard]] bool ran() const { return std::filesystem::exists(sandbox.home() / "handed"); }
  /** A command that keeps its input. */
  [[nodiscard]] std::string keep() const {
    return "tee '" + (sandbox.home() / "handed").string() + "'";
  }

private:
  void add(const std::string &title) {
    server.add_posting({{"Title", title}, {"Cat", "1"}, {"Poster", "anna"}});
  }
};

TEST_F(VelkorctlHits, ACommandIsHandedThemAsJson) {
  add_hits();
  const ProcessResult outcome = update_for(keep());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, EndsWith(handed()));
  EXPECT_EQ(count_objects(handed()), 3U);
  EXPECT_THAT(handed(),
              AllOf(HasSubstr(R"("schema":"velkorctl.watchers.run")"),
                    HasSubstr(R"("title":"Walvis twee")"), HasSubstr(R"({"watcher":"R&B","id":)")));
}

TEST_F(VelkorctlHits, WithoutAHitNoCommandRuns) {
  EXPECT_EQ(update_for(keep()).status, 0);
  server.advance({.added = 1, .seconds = 60});
  EXPECT_EQ(update_for(keep()).status, 0);
  EXPECT_FALSE(ran());
}

TEST_F(VelkorctlHits, AFailedUpdateRunsNoCommand) {
  add_hits();
  server.fault("/3.7.3/dumps/", "gzip-corrupt", 1);
  EXPECT_EQ(update_for(keep()).status, 1);
  EXPECT_FALSE(ran());
}

TEST_F(VelkorctlHits, NoShellReadsTheCommand) {
  add_hits();
  EXPECT_EQ(update_for("echo '$HOME' ; touch " + (sandbox.home() / "handed").string()).status, 0);
  EXPECT_FALSE(ran());
}

TEST_F(VelkorctlHits, ACommandMayUseTheCacheAndNeedNotReadItsInput) {
  add_hits();
  Words words = command({"watch", "add", "3"});
  std::string line;
  for (const std::string &word : words)
    line += "'" + word + "' ";
  const ProcessResult outcome = update_for(line);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(output({"config", "get", "watchlist"}), "3\n");
}

TEST_F(VelkorctlHits, TheFailureOfACommandHasAnExitCode) {
  add_hits();
  const ProcessResult outcome = run({"update", "--format", "json", "--exec", "sh -c 'exit 3'"});
  EXPECT_EQ(outcome.status, 8);
  EXPECT_THAT(outcome.out, AllOf(HasSubstr(R"("code":8)"), HasSubstr(R"("received":4)")));
  EXPECT_THAT(outcome.err, HasSubstr("the command of --exec has failed with exit status 3"));
  EXPECT_THAT(output({"list"}), HasSubstr("Walvis twee"));
}

TEST_F(VelkorctlHits, ACommandThatASignalEndsHasFailed) {
  add_hits();
  const ProcessResult outcome = update_for("sh -c 'kill -9 $$'");
  EXPECT_EQ(outcome.status, 8);
  EXPECT_THAT(outcome.err, HasSubstr("was ended by signal 9"));
}

TEST_F(VelkorctlHits, AWrongCommandIsRefusedBeforeTheUpdate) {
  add_hits();
  server.forget_requests();
  for (const char *line : {"", "'open", "/nonexistent"})
    EXPECT_EQ(update_for(line).status, 2) << line;
  EXPECT_THAT(server.requests(), SizeIs(0));
}

class VelkorctlNotify : public VelkorctlHits {
protected:
  PrivateBus bus;
};

/** The service that shows notifications. */
BusNameOwner service(const std::string &capabilities) {
  return BusNameOwner("org.freedesktop.Notifications",
                      {{"GetCapabilities", "(" + capabilities + ",)"},
                       {"GetServerInformation", "('service', 'maker', '1', '1.2')"},
                       {"Notify", "(uint32 1,)"}});
}

/** The calls that show something. */
std::vector<std::string> shown(const BusNameOwner &service) {
  std::vector<std::string> calls = service.calls();
  std::erase_if(calls, [](const std::string &call) { return !call.starts_with("Notify "); });
  return calls;
}

TEST_F(VelkorctlNotify, EachWatcherHasItsNotification) {
  const BusNameOwner desktop = service("['body']");
  add_hits();
  const ProcessResult outcome = run({"update", "--notify"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.err, Not(HasSubstr("warning")));
  EXPECT_THAT(shown(desktop),
              ElementsAre(HasSubstr("'R&B: 1 posting', 'Het beste van R&B'"),
                          HasSubstr("'Walvis: 2 postings', 'Walvis twee\\nWalvis <een>'")));
}

TEST_F(VelkorctlNotify, AServiceThatReadsMarkupGetsItEscaped) {
  const BusNameOwner desktop = service("['body', 'body-markup']");
  add_hits();
  EXPECT_EQ(run({"update", "--notify"}).status, 0);
  EXPECT_THAT(shown(desktop),
              ElementsAre(HasSubstr("'Het beste van R&amp;B'"), HasSubstr("Walvis &lt;een&gt;'")));
}

TEST_F(VelkorctlNotify, WithoutAHitNothingIsShown) {
  const BusNameOwner desktop = service("['body']");
  server.advance({.added = 1, .seconds = 60});
  EXPECT_EQ(run({"update", "--notify"}).status, 0);
  EXPECT_THAT(shown(desktop), ElementsAre());
}

TEST_F(VelkorctlNotify, WithoutAServiceTheUpdateSucceedsWithAWarning) {
  add_hits();
  const ProcessResult outcome = run({"update", "--notify"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("warning: the hits of the watchers are not shown: "));
  EXPECT_THAT(output({"list"}), HasSubstr("Walvis twee"));
}

TEST_F(VelkorctlHits, WithoutABusTheUpdateSucceedsWithAWarning) {
  add_hits();
  const ProcessResult outcome = run({"update", "--notify"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("are not shown: there is no session bus\n"));
}

}  // namespace
}  // namespace velkor::test
