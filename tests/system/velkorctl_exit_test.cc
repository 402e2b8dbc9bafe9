/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The exit codes, command by command. */
#include "tests/system/velkorctl_fixture.h"

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
  expect({
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
      {0, {"watch", "add", "3"}},
      {7, {"watch", "remove", "999999"}},
      {0, {"watch", "list"}},
      {0, {"watch", "upload"}},
      {0, {"watch", "download"}},
      {0, {"watchers", "add", "x"}},
      {7, {"watchers", "remove", "nothing"}},
      {0, {"watchers", "list"}},
      {0, {"watchers", "run"}},
      {7, {"badwords", "remove", "nothing"}},
      {0, {"badwords", "list"}},
      {7, {"badwords", "test", "nothing"}},
      {0, {"mail", "check"}},
      {0, {"mail", "fetch"}},
      {0, {"mail", "list"}},
      {7, {"mail", "read", "1"}},
      {7, {"mail", "delete", "1"}},
      {0, {"config", "get", "username"}},
      {7, {"config", "get", "proxyHost"}},
      {2, {"config", "get", "nothing"}},
      {2, {"config", "set", "nothing", "x"}},
      {2, {"config", "set", "trayIcon", "perhaps"}},
      {0, {"config", "list"}},
      {0, {"cache", "info"}},
      {0, {"cache", "verify"}},
      {6, {"cache", "backup", sandbox.home()}},
      {7, {"cache", "restore", sandbox.home() / "nothing"}},
      {0, {"completion"}},
      {0, {"--help"}},
      {2, {"nothing"}},
      {2, {"list", "--nothing"}},
  });
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
  // A link to itself cannot be followed, not even by the superuser.
  const std::filesystem::path loop = sandbox.home() / "loop";
  std::filesystem::create_symlink(loop, loop);
  for (const std::string &directory : {loop.string(), cached("velkor.conf").string()})
    expect({
        {6, {"--cache-dir", directory, "update"}},
        {6, {"--cache-dir", directory, "list"}},
        {6, {"--cache-dir", directory, "show", "3", "--offline"}},
        {6, {"--cache-dir", directory, "explain", "3"}},
        {6, {"--cache-dir", directory, "categories"}},
        {6, {"--cache-dir", directory, "groups"}},
        {6, {"--cache-dir", directory, "filters"}},
        {6, {"--cache-dir", directory, "tags"}},
        {6, {"--cache-dir", directory, "watch", "list"}},
        {6, {"--cache-dir", directory, "watch", "add", "3"}},
        {6, {"--cache-dir", directory, "watchers", "list"}},
        {6, {"--cache-dir", directory, "mail", "list"}},
        {6, {"--cache-dir", directory, "config", "get", "username"}},
        {6, {"--cache-dir", directory, "config", "list"}},
        {6, {"--cache-dir", directory, "config", "set", "trayIcon", "1"}},
        {6, {"--cache-dir", directory, "cache", "info"}},
        {6, {"--cache-dir", directory, "cache", "verify"}},
        {6, {"--cache-dir", directory, "cache", "backup", sandbox.home() / "backup"}},
        {6, {"--cache-dir", directory, "cache", "restore", sandbox.cache()}},
        {6, {"cache", "restore", directory}},
    });
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
