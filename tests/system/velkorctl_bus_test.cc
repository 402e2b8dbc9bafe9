/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl open and listen on a private session bus. */
#include <csignal>

#include "tests/support/bus_name_owner.h"
#include "tests/support/private_bus.h"
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class VelkorctlBus : public VelkorctlTest {
protected:
  PrivateBus bus;
};

TEST_F(VelkorctlBus, OpenPassesThePostingToTheRunningInstance) {
  const BusNameOwner front_end;
  EXPECT_EQ(output({"open", "42"}), "");
  EXPECT_THAT(front_end.calls(), ElementsAre("openPosting (42,)"));
}

TEST_F(VelkorctlBus, OpenReportsThatNoInstanceRuns) {
  const ProcessResult outcome = run({"open", "42"});
  EXPECT_EQ(outcome.status, 7);
  EXPECT_EQ(outcome.err, "velkorctl: Velkor is not running\n");
  bus.stop();
  EXPECT_EQ(run({"open", "42"}).status, 7);
}

TEST_F(VelkorctlBus, ListenPrintsTheCallsItGets) {
  ChildProcess listener(command({"listen"}));
  EXPECT_EQ(listener.read_line(), "listening");
  EXPECT_EQ(output({"open", "42"}), "");
  EXPECT_EQ(listener.read_line(), "open_posting 42");
  EXPECT_EQ(run_program({"dbus-send", "--session", "--print-reply", "--dest=org.Velkor.Velkor",
                         "/org/Velkor/Velkor/object", "org.Velkor.Velkor.bringToFront"})
                .status,
            0);
  EXPECT_EQ(listener.read_line(), "bring_to_front");
  listener.send_signal(SIGTERM);
  EXPECT_EQ(listener.wait(), 0);
}

TEST_F(VelkorctlBus, LeavesNoCoreDump) {
  Words words{"sh", "-c", "echo $$; ulimit -S -c unlimited; exec \"$@\"", "sh"};
  for (const std::string &word : command({"listen"}))
    words.push_back(word);
  ChildProcess listener(words);
  const std::string process = listener.read_line().value_or("");
  EXPECT_EQ(listener.read_line(), "listening");
  EXPECT_THAT(read_file("/proc/" + process + "/limits"),
              testing::ContainsRegex("Max core file size +0 +0 "));
}

TEST_F(VelkorctlBus, ListenPrintsJson) {
  ChildProcess listener(command({"listen", "--format", "ndjson"}));
  EXPECT_EQ(listener.read_line(), R"({"event":"listening","id":null})");
  EXPECT_EQ(output({"open", "7"}), "");
  EXPECT_EQ(listener.read_line(), R"({"event":"open_posting","id":7})");
}

TEST_F(VelkorctlBus, ListenPrintsAJsonDocumentThatEndsWithIt) {
  ChildProcess listener(command({"listen", "--format", "json"}));
  listener.wait_for(R"({"event":"listening","id":null})");
  EXPECT_EQ(output({"open", "7"}), "");
  listener.wait_for(R"({"event":"open_posting","id":7})");
  listener.send_signal(SIGTERM);
  const ProcessResult outcome = listener.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr(R"({"schema":"velkorctl.listen","version":1,"code":0,)"));
  EXPECT_EQ(count_objects(outcome.out), 2U);
}

TEST_F(VelkorctlBus, OtherCommandsMayWriteDuringListen) {
  ChildProcess listener(command({"listen"}));
  EXPECT_EQ(listener.read_line(), "listening");
  EXPECT_EQ(output({"config", "set", "trayIcon", "0"}), "");
}

TEST_F(VelkorctlBus, ListenDoesNotDisturbARunningInstance) {
  const BusNameOwner front_end;
  const ProcessResult outcome = run({"listen"});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.err, "velkorctl: Velkor is already running\n");
  EXPECT_THAT(front_end.calls(), ElementsAre());
}

TEST_F(VelkorctlBus, WithoutABusListenFails) {
  bus.stop();
  const ProcessResult outcome = run({"listen"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Maken van verbinding met DBus mislukt:"));
}

class VelkorctlMailNotice : public ServerVelkorctlTest {
protected:
  PrivateBus bus;
};

TEST_F(VelkorctlMailNotice, ListenReportsNewMail) {
  ASSERT_EQ(run({"mail", "send", "demo", "subject"}, {.input = "text"}).status, 0);
  ChildProcess listener(command({"listen", "--mail", "60"}));
  EXPECT_EQ(listener.read_line(), "mail");
  EXPECT_EQ(listener.read_line(), "listening");
}

}  // namespace
}  // namespace velkor::test
