/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The service on a bus, with real processes on both sides. */
#include <csignal>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/child_process.h"
#include "tests/support/private_bus.h"
#include "tests/support/sandbox.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using velkor::test::ChildProcess;
using velkor::test::EnvironmentVariable;
using velkor::test::PrivateBus;
using velkor::test::Sandbox;

constexpr const char *started = "initialize 1 active 0 message -";
constexpr const char *second = "initialize 0 active 1 message -";

class FrontEnd : public ChildProcess {
public:
  explicit FrontEnd(const std::string &argument = "argument", const std::string &isGui = "0")
      : ChildProcess({VELKOR_FRONT_END, argument, isGui}) {}

  std::string command(const std::string &text) {
    write_line(text);
    return next();
  }
  std::string next() { return read_line().value_or("<end>"); }
  int quit() {
    write_line("quit");
    return wait();
  }
};

/** A call of the service by an ordinary client; `argument` as gdbus takes it. */
class Call : public ChildProcess {
public:
  explicit Call(const std::string &method, const std::string &argument = "")
      : ChildProcess(command(method, argument)) {}

private:
  static std::vector<std::string> command(const std::string &method, const std::string &argument) {
    std::vector<std::string> words{"gdbus",
                                   "call",
                                   "--session",
                                   "--dest=org.Velkor.Velkor",
                                   "--object-path=/org/Velkor/Velkor/object",
                                   "--method=org.Velkor.Velkor." + method};
    if (!argument.empty())
      words.push_back(argument);
    return words;
  }
};

class ServiceTest : public testing::Test {
protected:
  Sandbox sandbox;
  EnvironmentVariable display{"DISPLAY", std::nullopt};
  EnvironmentVariable runtime{"XDG_RUNTIME_DIR", sandbox.home().string()};
};

class BusTest : public ServiceTest {
protected:
  PrivateBus bus;
};

TEST_F(BusTest, TheFirstInstanceOwnsTheService) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  EXPECT_EQ(first.quit(), 0);
}

TEST_F(BusTest, KeepsArgumentAndKindOfFrontEnd) {
  FrontEnd first("spot://42", "1");
  EXPECT_EQ(first.next(), started);
  EXPECT_EQ(first.command("describe"), "argument spot://42 gui 1");
}

TEST_F(BusTest, ASecondInstanceBringsTheFirstToTheFront) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  FrontEnd next;
  EXPECT_EQ(next.next(), second);
  EXPECT_EQ(first.next(), "velkor_dbus_bring_to_front");
  EXPECT_EQ(first.next(), "signal bring_to_front");
}

TEST_F(BusTest, OpensAPostingByItsNumber) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  Call call("openPosting", "42");
  EXPECT_EQ(call.read_rest(), "()\n");
  EXPECT_EQ(call.wait(), 0);
  EXPECT_EQ(first.next(), "velkor_dbus_open_posting(42)");
  EXPECT_EQ(first.next(), "signal open_posting 42");
}

TEST_F(BusTest, AnswersAClientThatIsNotGLibs) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  const auto send = [](const std::vector<std::string> &message) {
    std::vector<std::string> words{"dbus-send", "--session", "--print-reply=literal",
                                   "--dest=org.Velkor.Velkor", "/org/Velkor/Velkor/object"};
    words.insert(words.end(), message.begin(), message.end());
    return ChildProcess(words).wait();
  };
  EXPECT_EQ(send({"org.Velkor.Velkor.openPosting", "int32:42"}), 0);
  EXPECT_EQ(first.next(), "velkor_dbus_open_posting(42)");
  EXPECT_EQ(first.next(), "signal open_posting 42");
  EXPECT_EQ(send({"org.Velkor.Velkor.bringToFront"}), 0);
  EXPECT_EQ(first.next(), "velkor_dbus_bring_to_front");
  EXPECT_EQ(first.next(), "signal bring_to_front");
  EXPECT_NE(send({"org.Velkor.Velkor.openPosting", "string:tekst"}), 0);
}

TEST_F(BusTest, TakesTheWholeRangeOfNumbers) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  for (const std::string number : {"-2147483648", "2147483647", "0"}) {
    Call call("openPosting", "int32 " + number);
    EXPECT_EQ(call.wait(), 0);
    EXPECT_EQ(first.next(), "velkor_dbus_open_posting(" + number + ")");
    EXPECT_EQ(first.next(), "signal open_posting " + number);
  }
}

TEST_F(BusTest, RefusesACallWithTheWrongArguments) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  Call text("openPosting", "'tekst'");
  EXPECT_NE(text.wait(), 0);
  Call local("velkor_dbus_is_gui");
  EXPECT_NE(local.wait(), 0);
  EXPECT_EQ(first.command("describe"), "argument argument gui 0");
}

TEST_F(BusTest, ListsItsMethodsAndSignals) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  ChildProcess introspection({"gdbus", "introspect", "--xml", "--session",
                              "--dest=org.Velkor.Velkor",
                              "--object-path=/org/Velkor/Velkor/object"});
  const std::string xml = introspection.read_rest();
  EXPECT_THAT(xml, AllOf(HasSubstr("<interface name=\"org.Velkor.Velkor\">"),
                         HasSubstr("<method name=\"bringToFront\">"),
                         HasSubstr("<method name=\"openPosting\">"),
                         HasSubstr("<arg name=\"postId\" type=\"i\" direction=\"in\"/>"),
                         HasSubstr("<signal name=\"bring_to_front\">"),
                         HasSubstr("<signal name=\"open_posting\">")));
}

/** Reads up to the next line that has `part` in it; what comes back is that line. */
std::string skip_to(ChildProcess &program, const std::string &part) {
  std::string line;
  do {
    line = program.read_line().value_or(part + " never came");
  } while (line.find(part) == std::string::npos);
  return line;
}

TEST_F(BusTest, SignalsAreSentOnTheBus) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  ChildProcess monitor({"dbus-monitor", "--session", "type=signal"});
  // A connection loses its name when it becomes a monitor, and sees every signal from then on.
  skip_to(monitor, "member=NameLost");
  Call call("openPosting", "7");
  EXPECT_EQ(call.wait(), 0);
  EXPECT_THAT(skip_to(monitor, "interface=org.Velkor.Velkor"),
              AllOf(HasSubstr("path=/org/Velkor/Velkor/object"), HasSubstr("member=open_posting")));
  EXPECT_EQ(monitor.read_line().value_or(""), "   int32 7");
}

TEST_F(BusTest, StartsAgainInTheSameProcessAfterCleanUp) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  EXPECT_EQ(first.command("clean up"), "cleaned up, object gone");
  EXPECT_EQ(first.command("start"), started);
  Call call("bringToFront");
  EXPECT_EQ(call.wait(), 0);
  EXPECT_EQ(first.next(), "velkor_dbus_bring_to_front");
  EXPECT_EQ(first.next(), "signal bring_to_front");
}

TEST_F(BusTest, StartingTwiceExportsOneObject) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  EXPECT_EQ(first.command("start"), started);
  Call call("bringToFront");
  EXPECT_EQ(call.wait(), 0);
  EXPECT_EQ(first.next(), "velkor_dbus_bring_to_front");
  EXPECT_EQ(first.next(), "signal bring_to_front");
}

TEST_F(BusTest, AnswersNobodyAfterCleanUp) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  EXPECT_EQ(first.command("clean up"), "cleaned up, object gone");
  FrontEnd next;
  EXPECT_EQ(next.next(), started);
  EXPECT_EQ(first.quit(), 0);
}

TEST_F(BusTest, CleaningUpTwiceIsHarmless) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  EXPECT_EQ(first.command("clean up"), "cleaned up, object gone");
  EXPECT_EQ(first.command("clean up"), "cleaned up, object gone");
  EXPECT_EQ(first.quit(), 0);
}

TEST_F(BusTest, TheNameIsFreeWhenTheProcessIsGone) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  EXPECT_EQ(first.quit(), 0);
  FrontEnd next;
  EXPECT_EQ(next.next(), started);
}

TEST_F(BusTest, AnInstanceThatDoesNotAnswerCountsAsRunning) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  first.send_signal(SIGSTOP);
  const EnvironmentVariable short_wait("ANSWER_TIME", "100");
  FrontEnd next;
  EXPECT_EQ(next.next(), second);
  first.send_signal(SIGCONT);
  EXPECT_EQ(first.next(), "velkor_dbus_bring_to_front");
}

TEST_F(BusTest, AnInstanceThatEndsInsteadOfAnsweringCountsAsNotRunning) {
  FrontEnd first("leave without an answer");
  EXPECT_EQ(first.next(), started);
  FrontEnd next;
  EXPECT_EQ(next.next(), started);
}

TEST_F(BusTest, SurvivesTheEndOfTheBus) {
  FrontEnd first;
  EXPECT_EQ(first.next(), started);
  bus.stop();
  EXPECT_EQ(first.next(), "the bus is gone");
  EXPECT_EQ(first.command("describe"), "argument argument gui 0");
  EXPECT_THAT(first.command("start"),
              StartsWith("initialize 0 active 0 message Maken van verbinding met DBus mislukt:"));
  EXPECT_THAT(first.next(), Not(IsEmpty()));  // the reason, on a line of its own
  EXPECT_EQ(first.next(), "");
  EXPECT_EQ(first.command("clean up"), "cleaned up, object gone");
  EXPECT_EQ(first.quit(), 0);
}

TEST_F(ServiceTest, ARefusedNameIsReportedAndTheObjectExportedNonetheless) {
  PrivateBus bus("<deny own=\"org.Velkor.Velkor\"/>");
  FrontEnd first;
  EXPECT_EQ(first.next(),
            "initialize 1 active 0 message Registreren van DBus path org.Velkor.Velkor mislukt:");
  EXPECT_THAT(first.next(), HasSubstr("org.Velkor.Velkor"));
  EXPECT_EQ(first.next(), "");
  EXPECT_EQ(first.command("describe"), "argument argument gui 0");
}

TEST_F(ServiceTest, RunsWithoutABus) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS",
                                    "unix:path=" + (sandbox.home() / "absent").string());
  FrontEnd first;
  EXPECT_EQ(first.next(), "initialize 0 active 0 message Maken van verbinding met DBus mislukt:");
  EXPECT_THAT(first.next(), HasSubstr("absent"));
  EXPECT_EQ(first.next(), "");
  EXPECT_EQ(first.command("clean up"), "cleaned up, object gone");
  EXPECT_EQ(first.quit(), 0);
}

TEST_F(ServiceTest, RunsWithoutAnAddressOfABus) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
  FrontEnd first;
  EXPECT_EQ(first.next(), "initialize 0 active 0 message Maken van verbinding met DBus mislukt:");
  EXPECT_THAT(first.next(), Not(IsEmpty()));
  EXPECT_EQ(first.next(), "");
  EXPECT_EQ(first.quit(), 0);
}

TEST_F(ServiceTest, RejectsABrokenAddress) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "geen adres");
  FrontEnd first;
  EXPECT_EQ(first.next(), "initialize 0 active 0 message Maken van verbinding met DBus mislukt:");
}

}  // namespace
