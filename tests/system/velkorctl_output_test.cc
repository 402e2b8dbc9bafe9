/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* What is different with JSON on standard error, and on a terminal. */
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class VelkorctlTerminal : public VelkorctlTest {
protected:
  VelkorctlTerminal() {
    cache_postings(event(1, "Alpha", "<Link>https://example.org/a</Link>") +
                   event(2, "B\u00e9ta", "<Link>javascript:alert</Link>"));
  }

  /** What a terminal gets. */
  [[nodiscard]] std::string shown(const Words &words,
                                  const std::map<std::string, std::string> &environment = {},
                                  unsigned short columns = 80) const {
    ChildProcess child(command(words), {.environment = environment, .terminal_columns = columns});
    return child.finish().out;
  }

  static constexpr const char *bold_title = "\033[1mTITLE\033[0m";
};

TEST_F(VelkorctlTerminal, ColoursAreForTerminalsThatHaveThem) {
  EXPECT_THAT(shown({"list"}, {{"TERM", "xterm"}}), HasSubstr(bold_title));
  EXPECT_THAT(shown({"list"}), Not(HasSubstr("\033")));
  EXPECT_THAT(output({"list"}), Not(HasSubstr("\033")));
  EXPECT_THAT(shown({"list"}, {{"TERM", "xterm"}, {"NO_COLOR", "1"}}), Not(HasSubstr("\033[1m")));
}

TEST_F(VelkorctlTerminal, ColoursAreUsedAsAskedFor) {
  EXPECT_THAT(output({"--color", "always", "list"}), HasSubstr(bold_title));
  EXPECT_THAT(shown({"--color", "never", "list"}, {{"TERM", "xterm"}}), Not(HasSubstr("\033[1m")));
  EXPECT_EQ(run({"--color", "sometimes", "list"}).status, 2);
  EXPECT_THAT(output({"--color", "always", "list", "--format", "tsv"}), Not(HasSubstr("\033")));
}

TEST_F(VelkorctlTerminal, ATitleIsALinkToTheWebAddressOfItsPosting) {
  const std::string text = shown({"list"}, {{"TERM", "xterm"}, {"NO_COLOR", "1"}});
  EXPECT_THAT(text, HasSubstr("\033]8;;https://example.org/a\033\\Alpha\033]8;;\033\\"));
  EXPECT_THAT(text, Not(HasSubstr("javascript")));
  EXPECT_THAT(output({"--color", "always", "list"}), Not(HasSubstr("\033]8")));
}

TEST_F(VelkorctlTerminal, TextIsAsciiWhereTheLocaleHasNoMore) {
  const std::string text = shown({"list"}, {{"LC_ALL", "C"}}, 60);
  EXPECT_THAT(text, HasSubstr("Beta"));
  EXPECT_THAT(text, Not(testing::ContainsRegex("[\x80-\xff]")));
  EXPECT_THAT(shown({"list"}), HasSubstr("B\u00e9ta"));
}

TEST_F(VelkorctlTerminal, ANarrowTerminalShowsTitleAndPoster) {
  const std::string text = shown({"list"}, {}, 20);
  EXPECT_THAT(text, AllOf(HasSubstr("TITLE"), HasSubstr("POSTER"), HasSubstr("Alpha  ann")));
  EXPECT_THAT(text, Not(HasSubstr("STATUS")));
}

TEST_F(VelkorctlTerminal, APagerShowsWhatATerminalGets) {
  const std::map<std::string, std::string> pager{{"TERM", "xterm"},
                                                 {"VELKORCTL_PAGER", "sed 's/^/> /'"}};
  EXPECT_THAT(shown({"--color", "never", "list"}, pager), HasSubstr("> ID  DATE"));
  EXPECT_THAT(shown({"--color", "never", "show", "1", "--offline"}, pager), HasSubstr("> ID"));
  EXPECT_THAT(shown({"--color", "never", "--no-pager", "list"}, pager), Not(HasSubstr("> ID")));
  EXPECT_THAT(shown({"config", "set", "trayIcon", "1"}, pager), Not(HasSubstr(">")));
  const ProcessResult piped = run({"list"}, {.environment = pager});
  EXPECT_THAT(piped.out, Not(HasSubstr(">")));
}

TEST_F(VelkorctlTerminal, LeavingThePagerEarlyIsNoFailure) {
  std::string events;
  for (int id = 1; id <= 5000; ++id)
    events += event(id, "a title of some length to fill the pipe");
  cache_postings(events);
  ChildProcess listing(command({"list"}),
                       {.environment = {{"TERM", "xterm"}, {"VELKORCTL_PAGER", "head -n 1"}},
                        .terminal_columns = 80});
  EXPECT_EQ(listing.finish().status, 0);
}

class VelkorctlMessages : public VelkorctlTest {};

TEST_F(VelkorctlMessages, AnErrorIsAnObjectWithItsCode) {
  const ProcessResult outcome = run({"show", "9", "--offline", "--format", "ndjson"});
  EXPECT_EQ(outcome.status, 7);
  EXPECT_THAT(outcome.err,
              HasSubstr(R"({"schema":"velkorctl.error","version":1,"code":7,"libraryCode":null,)"
                        R"("message":"posting 9 is not in the cache","operation":null,)"
                        R"("host":null})"));
}

TEST_F(VelkorctlMessages, AWrongCommandLineIsAnObjectToo) {
  for (const Words &words :
       {Words{"lst", "--format", "json"}, Words{"list", "--format=json", "-?"}}) {
    const ProcessResult outcome = run(words);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err,
                testing::StartsWith(R"({"schema":"velkorctl.error","version":1,"code":2,)"));
  }
}

TEST_F(VelkorctlMessages, AFailedRequestNamesOperationHostAndCode) {
  settings("username=ann\npassword=secret\n");
  const ProcessResult outcome =
      run({"--server", "127.0.0.1:1", "--lib-dir", ServerProcess::plugin_directory(), "kudos", "7",
           "--format", "json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr(R"("operation":"asking for the kudos")"),
                                 HasSubstr(R"("host":"127.0.0.1:1"})"),
                                 testing::ContainsRegex("\"libraryCode\":[1-9]")));
}

}  // namespace
}  // namespace velkor::test
