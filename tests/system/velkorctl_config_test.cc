/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl config. */
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class VelkorctlConfig : public VelkorctlTest {
protected:
  ProcessResult set(const Words &words, const std::string &input = "") const {
    Words all{"config", "set"};
    all.insert(all.end(), words.begin(), words.end());
    return run(all, {.input = input});
  }
};

TEST_F(VelkorctlConfig, SetsAndPrintsAValue) {
  EXPECT_EQ(set({"username", "ann"}).status, 0);
  EXPECT_EQ(output({"config", "get", "username"}), "ann\n");
  EXPECT_EQ(output({"config", "get", "trayIcon"}), "1\n");
}

TEST_F(VelkorctlConfig, CreatesTheDirectory) {
  std::filesystem::remove_all(sandbox.cache());
  EXPECT_EQ(set({"username", "ann"}).status, 0);
  const auto mode = std::filesystem::status(sandbox.cache()).permissions();
  EXPECT_EQ(mode, std::filesystem::perms::owner_all);
}

TEST_F(VelkorctlConfig, AListHoldsSeveralValues) {
  EXPECT_EQ(set({"watcher", "--", "big show", "-x"}).status, 0);
  EXPECT_EQ(output({"config", "get", "watcher"}), "big show\n-x\n");
  EXPECT_EQ(set({"watcher"}).status, 0);
  EXPECT_EQ(output({"config", "get", "watcher"}), "");
}

TEST_F(VelkorctlConfig, UnsetReturnsToTheDefault) {
  settings("username=ann\nratingScale=10\n");
  EXPECT_EQ(output({"config", "unset", "ratingScale"}), "");
  EXPECT_EQ(output({"config", "get", "ratingScale"}), "100\n");
  EXPECT_EQ(output({"config", "unset", "username"}), "");
  const ProcessResult outcome = run({"config", "get", "username"});
  EXPECT_EQ(outcome.status, 7);
  EXPECT_EQ(outcome.err, "velkorctl: username is not set\n");
}

TEST_F(VelkorctlConfig, APasswordComesFromStandardInputOnly) {
  const ProcessResult refused = set({"password", "secret"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("--stdin"));
  EXPECT_EQ(set({"password", "--stdin"}, "se=cret\n").status, 0);
  EXPECT_THAT(read_file(cached("velkor.conf")), HasSubstr("password=se=cret\n"));
  EXPECT_EQ(set({"password", "--stdin"}).status, 2);
}

TEST_F(VelkorctlConfig, APasswordIsPrintedOnlyOnExplicitRequest) {
  settings("password=secret\n");
  EXPECT_THAT(output({"config", "list"}), Not(HasSubstr("secret")));
  EXPECT_THAT(output({"config", "list", "--format", "json"}), Not(HasSubstr("secret")));
  EXPECT_EQ(run({"config", "get", "password"}).status, 2);
  EXPECT_EQ(output({"config", "get", "password", "--show-secret"}), "secret\n");
}

TEST_F(VelkorctlConfig, ATypedPasswordIsNotShown) {
  ChildProcess asking(command({"config", "set", "password", "--stdin"}), {.terminal_columns = 80});
  asking.wait_for("password: ");
  asking.write("secret\n");
  const ProcessResult outcome = asking.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, Not(HasSubstr("secret")));
  EXPECT_EQ(output({"config", "get", "password", "--show-secret"}), "secret\n");
}

TEST_F(VelkorctlConfig, AnInterruptedPromptRestoresTheTerminal) {
  // Only a controlling terminal turns the key into a signal.
  Words words{"setsid", "--ctty", "--wait",
              "sh",     "-c",     "trap : INT; \"$@\"; echo status $?; stty -a",
              "sh"};
  for (const std::string &word : command({"config", "set", "password", "--stdin"}))
    words.push_back(word);
  ChildProcess asking(words, {.terminal_columns = 80});
  asking.wait_for("password: ");
  asking.write("\x03");
  const ProcessResult outcome = asking.finish();
  EXPECT_THAT(outcome.out, HasSubstr("status 130"));
  EXPECT_THAT(outcome.out, testing::ContainsRegex("[^-]echo "));
}

TEST_F(VelkorctlConfig, OnlyTheOwnerCanReadTheSettings) {
  set({"password", "--stdin"}, "secret\n");
  const auto mode = std::filesystem::status(cached("velkor.conf")).permissions();
  EXPECT_EQ(mode, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(VelkorctlConfig, ARefusedValueLeavesTheFileAlone) {
  const std::string before = "# a comment\nusername=ann\n";
  settings(before);
  for (const Words &words : std::vector<Words>{{"trayIcon", "2"},
                                               {"username", "a\nb"},
                                               {"ledenCount", "3"},
                                               {"username"},
                                               {"geen", "1"}})
    EXPECT_EQ(set(words).status, 2) << words.front();
  EXPECT_EQ(read_file(cached("velkor.conf")), before);
}

TEST_F(VelkorctlConfig, TakesValuesInWords) {
  EXPECT_EQ(set({"verwijderPostsNaXDagen", "28 days"}).status, 0);
  EXPECT_EQ(set({"trayIcon", "no"}).status, 0);
  EXPECT_EQ(output({"config", "get", "verwijderPostsNaXDagen"}), "3\n");
  EXPECT_EQ(output({"config", "get", "verwijderPostsNaXDagen", "--explain"}), "3 (28 days)\n");
  EXPECT_EQ(output({"config", "get", "trayIcon", "--explain"}), "0 (no)\n");
  const ProcessResult outcome = set({"verwijderPostsNaXDagen", "30"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "velkorctl: verwijderPostsNaXDagen: \"30\" is not one of 7, 14, 21, 28, "
                         "35, 42 or 49 days, nor the number of one from 0 to 6\n");
}

TEST_F(VelkorctlConfig, ATerminalShowsWhatAValueMeans) {
  settings("username=ann\npassword=secret\n");
  ChildProcess getting(command({"config", "get", "trayIcon"}), {.terminal_columns = 80});
  EXPECT_EQ(getting.finish().out, "1 (yes)\r\n");
  ChildProcess listing(command({"config", "list"}), {.terminal_columns = 80});
  const std::string shown = listing.finish().out;
  EXPECT_THAT(shown, HasSubstr("trayIcon = 1 (yes)\r\n    Whether there is an icon"));
  EXPECT_THAT(shown, HasSubstr("password = ********\r\n"));
  EXPECT_THAT(shown, Not(HasSubstr("secret")));
  ChildProcess table(command({"config", "list", "--format", "table"}), {.terminal_columns = 80});
  EXPECT_THAT(table.finish().out, Not(HasSubstr("Whether")));
}

TEST_F(VelkorctlConfig, ExplainsEverySetting) {
  settings("password=secret\nstatusFilter=0\n");
  const std::string text = output({"config", "list", "--explain"});
  EXPECT_THAT(text, HasSubstr("verwijderPostsNaXDagen = 1 (14 days)\n"
                              "    The age at which postings leave the cache, unless they are on "
                              "the watchlist.\n"
                              "    Values: 7, 14, 21, 28, 35, 42 or 49 days; default: 14 days; "
                              "used by the library.\n"));
  EXPECT_THAT(text, HasSubstr("username is not set\n"));
  EXPECT_THAT(text, HasSubstr("watcher is empty\n"));
  EXPECT_THAT(text, HasSubstr("htmlRenderer is empty\n"));
  EXPECT_THAT(text, HasSubstr("statusFilter = 0 (Ready)\n"));
  EXPECT_THAT(text, Not(HasSubstr("secret")));
  const std::string json = output({"config", "list", "--explain", "--format", "json"});
  EXPECT_EQ(count_objects(json), 34U);
  EXPECT_THAT(json, HasSubstr(R"("key":"trayIcon","value":"1","meaning":"yes","description":)"));
  EXPECT_THAT(json, HasSubstr(R"("choices":"yes or no","default":"yes","usedBy":"front end")"));
  EXPECT_THAT(json, Not(HasSubstr("secret")));
}

TEST_F(VelkorctlConfig, ListsEverySetting) {
  settings("username=ann\nwatcher=a\nwatcher=b\n");
  const std::string json = output({"config", "list", "--format", "json"});
  EXPECT_THAT(json, HasSubstr(R"("key":"username","value":"ann")"));
  EXPECT_THAT(json, HasSubstr(R"("key":"watcher","value":["a","b"])"));
  EXPECT_THAT(json, HasSubstr(R"("key":"password","value":null)"));
  EXPECT_THAT(output({"config", "list", "--no-header"}), HasSubstr("watcher  a, b\n"));
  EXPECT_THAT(output({"config", "get", "watcher", "--format", "json"}),
              HasSubstr(R"("item":{"key":"watcher","value":["a","b"])"));
}

TEST_F(VelkorctlConfig, UnreadableSettingsAreNotReplaced) {
  std::filesystem::create_directory(cached("velkor.conf"));
  const ProcessResult outcome = set({"username", "ann"});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, HasSubstr("velkor.conf"));
  EXPECT_TRUE(std::filesystem::is_directory(cached("velkor.conf")));
}

TEST_F(VelkorctlConfig, AFullDiskLeavesTheSettingsUnchanged) {
  settings("username=ann\n");
  const ProcessResult outcome = run({"config", "set", "trayIcon", "0"}, {.file_size_limit = 400});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, HasSubstr("could not be saved"));
  EXPECT_EQ(read_file(cached("velkor.conf")), "username=ann\n");
}

}  // namespace
}  // namespace velkor::test
