/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The exit codes, command by command. */
#include <algorithm>

#include "tests/system/velkorctl_fixture.h"
#include "velkorctl/commands.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;

class VelkorctlExit : public ServerVelkorctlTest {
protected:
  struct Case {
    int status;
    Words words;
  };

  void expect(const std::vector<Case> &cases, const ProcessOptions &options = {}) const {
    for (const Case &one : cases) {
      const ProcessResult outcome = run(one.words, options);
      EXPECT_EQ(outcome.status, one.status) << ::testing::PrintToString(one.words) << "\n"
                                            << outcome.err;
    }
  }

  /** Whether `one` runs the command `name`, such as "config set". */
  static bool runs(const Case &one, const std::string &name) {
    std::string line;
    for (const std::string &word : one.words)
      line += " " + word;
    return (line + " ").find(" " + name + " ") != std::string::npos;
  }

  /** Fails the test when a command has no case, unless it is one of `others`. */
  static void require_every_command(const std::vector<Case> &cases,
                                    const std::set<std::string> &others) {
    for (const ctl::CommandGroup &group : ctl::all_commands())
      for (const ctl::Command &command : group.commands) {
        const std::string name = (group.name.empty() ? "" : group.name + " ") + command.name;
        const bool any =
            std::ranges::any_of(cases, [&name](const Case &one) { return runs(one, name); });
        EXPECT_NE(any, others.contains(name)) << name;
      }
  }

  /** Runs the command without a standard output. */
  [[nodiscard]] ProcessResult run_closed(const Words &words) const {
    Words all{"sh", "-c", "exec \"$@\" >&-", "sh"};
    for (const std::string &word : command(words))
      all.push_back(word);
    return run_program(all);
  }
};

TEST_F(VelkorctlExit, WithACacheAndAServer) {
  ASSERT_EQ(run({"update"}).status, 0);
  const std::string backup = sandbox.home() / "backup";
  const std::vector<Case> cases{
      {0, {"update"}},
      {5, {"update", "--exit-code"}},
      {0, {"list"}},
      {0, {"list", "--title", "no such title"}},
      {2, {"list", "--filter", "nothing"}},
      {2, {"list", "--category", "nothing"}},
      {2, {"list", "--limit", "0"}},
      {0, {"show", "3"}},
      {7, {"show", "999999"}},
      {7, {"show", "999999", "--offline"}},
      {2, {"show", "nothing"}},
      {0, {"forum", "3"}},
      {7, {"forum", "999999"}},
      {2, {"forum", "3", "--reply", "/nonexistent"}},
      {7, {"explain", "999999"}},
      {7, {"open", "3"}},
      {0, {"categories"}},
      {0, {"groups"}},
      {0, {"groups", "--fetch"}},
      {0, {"filters"}},
      {0, {"filters", "list"}},
      {0, {"filters", "add", "Nieuw", "--category", "0"}},
      {7, {"filters", "edit", "nothing", "--category", "0"}},
      {7, {"filters", "rename", "nothing", "x"}},
      {7, {"filters", "move", "nothing", "1"}},
      {7, {"filters", "remove", "nothing"}},
      {0, {"filters", "export"}},
      {2, {"filters", "import", "/nonexistent"}},
      {0, {"tags"}},
      {2, {"tags", "nothing"}},
      {0, {"kudos", "3"}},
      {2, {"warn", "3", ""}},
      {0, {"profile", "demo"}},
      {7, {"profile", "nobody"}},
      {0, {"myzox"}},
      {2, {"post", "/nonexistent"}},
      {2, {"signup", "newby", "newby@example.org"}},
      {2, {"account", "set", "newby"}},
      {2, {"account", "keep", "nowhere"}},
      {0, {"watch", "add", "3"}},
      {7, {"watch", "remove", "999999"}},
      {0, {"watch", "list"}},
      {0, {"watch", "upload"}},
      {0, {"watch", "download"}},
      {0, {"watch", "clear"}},
      {0, {"watchers", "add", "x"}},
      {7, {"watchers", "remove", "nothing"}},
      {0, {"watchers", "list"}},
      {0, {"watchers", "run"}},
      {0, {"badwords", "add", "no such word"}},
      {7, {"badwords", "remove", "nothing"}},
      {0, {"badwords", "list"}},
      {7, {"badwords", "test", "nothing"}},
      {0, {"mail", "check"}},
      {0, {"mail", "fetch"}},
      {0, {"mail", "list"}},
      {7, {"mail", "read", "1"}},
      {2, {"mail", "send", "demo", "x"}},
      {7, {"mail", "delete", "1"}},
      {0, {"config", "get", "username"}},
      {7, {"config", "get", "proxyHost"}},
      {2, {"config", "get", "nothing"}},
      {2, {"config", "set", "nothing", "x"}},
      {2, {"config", "set", "trayIcon", "perhaps"}},
      {0, {"config", "unset", "trayIcon"}},
      {2, {"config", "unset", "nothing"}},
      {0, {"config", "list"}},
      {0, {"cache", "info"}},
      {0, {"cache", "verify"}},
      {6, {"cache", "backup", sandbox.home()}},
      {0, {"cache", "backup", backup}},
      {0, {"cache", "restore", backup}},
      {7, {"cache", "restore", sandbox.home() / "nothing"}},
      {0, {"cache", "resync"}},
      {0, {"doctor"}},
      {0, {"completion"}},
      {0, {"--help"}},
      {2, {"nothing"}},
      {2, {"list", "--nothing"}},
  };
  expect(cases);
  // A listener runs until it is interrupted; see velkorctl_bus_test.cc.
  require_every_command(cases, {"listen"});
  const ProcessResult unknown = run({"mail", "send", "nobody", "x"}, {.input = "text"});
  EXPECT_EQ(unknown.status, 7) << unknown.err;
}

TEST_F(VelkorctlExit, WithoutAnAccount) {
  settings("");
  expect({
      {3, {"update"}},
      {3, {"show", "3"}},
      {3, {"forum", "3"}},
      {3, {"groups", "--fetch"}},
      {3, {"kudos", "3"}},
      {3, {"warn", "3", "spam"}},
      {3, {"profile", "demo"}},
      {3, {"myzox"}},
      {3, {"watch", "upload"}},
      {3, {"watch", "download"}},
      {3, {"mail", "check"}},
      {3, {"mail", "fetch"}},
      {3, {"cache", "resync"}},
  });
}

TEST_F(VelkorctlExit, WithoutACache) {
  std::filesystem::remove_all(sandbox.cache());
  expect({
      {0, {"list"}},
      {7, {"cache", "verify"}},
      {7, {"cache", "backup", sandbox.home() / "backup"}},
      {7, {"mail", "read", "1"}},
      {7, {"config", "get", "username"}},
  });
}

TEST_F(VelkorctlExit, WithADirectoryThatCannotBeRead) {
  const std::string spot = sandbox.home() / "spot";
  write_file(spot, "[posting]\ntitle=x\ncategory=Beeld\nsub-category=DivX\nnewsgroups=1\n");
  const std::vector<Case> cases{
      {6, {"update"}},
      {6, {"list"}},
      {6, {"show", "3"}},
      {6, {"show", "3", "--offline"}},
      {6, {"forum", "3"}},
      {6, {"explain", "3"}},
      {6, {"categories"}},
      {6, {"groups"}},
      {6, {"filters", "list"}},
      {6, {"filters", "add", "x", "--category", "0"}},
      {6, {"filters", "edit", "x", "--category", "0"}},
      {6, {"filters", "rename", "x", "y"}},
      {6, {"filters", "move", "x", "1"}},
      {6, {"filters", "remove", "x"}},
      {6, {"filters", "export"}},
      {6, {"filters", "import"}},
      {6, {"tags"}},
      {6, {"watch", "list"}},
      {6, {"watch", "add", "3"}},
      {6, {"watch", "remove", "3"}},
      {6, {"watch", "clear"}},
      {6, {"watch", "upload"}},
      {6, {"watch", "download"}},
      {6, {"watchers", "add", "x"}},
      {6, {"watchers", "remove", "x"}},
      {6, {"watchers", "list"}},
      {6, {"watchers", "run"}},
      {6, {"badwords", "add", "x"}},
      {6, {"badwords", "remove", "x"}},
      {6, {"badwords", "list"}},
      {6, {"badwords", "test", "x"}},
      {6, {"mail", "check"}},
      {6, {"mail", "fetch"}},
      {6, {"mail", "list"}},
      {6, {"mail", "read", "1"}},
      {6, {"mail", "send", "demo", "x"}},
      {6, {"mail", "delete", "1"}},
      {6, {"kudos", "3"}},
      {6, {"warn", "3", "spam"}},
      {6, {"profile", "demo"}},
      {6, {"myzox"}},
      {6, {"post", spot}},
      {6, {"signup", "newby", "newby@example.org", "--password-stdin"}},
      {6, {"account", "set", "newby", "--password-stdin"}},
      {6, {"account", "keep", "file"}},
      {6, {"listen"}},
      {6, {"config", "get", "username"}},
      {6, {"config", "list"}},
      {6, {"config", "set", "trayIcon", "1"}},
      {6, {"config", "unset", "trayIcon"}},
      {6, {"cache", "info"}},
      {6, {"cache", "verify"}},
      {6, {"cache", "backup", sandbox.home() / "backup"}},
      {6, {"cache", "restore", sandbox.cache()}},
      {6, {"cache", "resync"}},
      {1, {"doctor"}},
  };
  require_every_command(cases, {"completion", "open"});
  // A link to itself cannot be followed, not even by the superuser.
  const std::filesystem::path loop = sandbox.home() / "loop";
  std::filesystem::create_symlink(loop, loop);
  for (const std::string &directory : {loop.string(), cached("velkor.conf").string()}) {
    for (Case one : cases) {
      one.words.insert(one.words.begin(), {"--cache-dir", directory});
      expect({one}, {.input = "<Filters/>"});
    }
    expect({{6, {"cache", "restore", directory}}});
  }
}

TEST_F(VelkorctlExit, WithAFullOrClosedStandardOutput) {
  const std::vector<Words> printing{{"filters"}, {"tags"},       {"config", "list"},
                                    {"list"},    {"completion"}, {"cache", "info"},
                                    {"--help"},  {"--version"},  {"kudos", "3"}};
  for (const Words &words : printing) {
    expect({{1, words}}, {.output_file = "/dev/full"});
    const ProcessResult closed = run_closed(words);
    EXPECT_EQ(closed.status, 1) << ::testing::PrintToString(words);
    EXPECT_THAT(closed.err, HasSubstr("cannot write to standard output"));
  }
}

TEST_F(VelkorctlExit, ACommandThatPrintsNothingNeedsNoStandardOutput) {
  EXPECT_EQ(run_closed({"watchers", "add", "x"}).status, 0);
}

}  // namespace
}  // namespace velkor::test
