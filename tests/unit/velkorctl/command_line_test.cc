/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "parts_fixture.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

Exit no_run(const Context & /*context*/) {
  return Exit::ok;
}

class CommandLineTest : public ::testing::Test {
protected:
  ParsedCommandLine parse(const std::vector<std::string> &words) const {
    return parse_command_line(commands_, words);
  }

  std::string usage_error(const std::vector<std::string> &words) const {
    return usage_error_of([&] { parse(words); });
  }

  void expect_usage_error(const std::vector<std::string> &words) const {
    EXPECT_NE(usage_error(words), "");
  }

private:
  using Count = Argument::Count;
  std::vector<CommandGroup> commands_{
      {"",
       "",
       {{"list",
         "Print",
         {},
         {{"-t,--title", "TEXT", "Title"},
          {"--status", "WORD", "State", true},
          {"--sort", "ORDER", "Order", false, {"stamp", "title"}},
          {"--new", "", "New"}},
         no_run},
        {"show", "Show", {{"ID", "The posting"}}, {}, no_run}}},
      {"config",
       "Settings",
       {{"set", "Set", {{"KEY", "Key"}, {"VALUE", "Value", Count::any}}, {}, no_run},
        {"get", "Get", {{"KEY", "Key"}}, {}, no_run}}},
      {"filters",
       "Filters",
       {{"add", "Add", {{"NAME", "Name"}}, {}, no_run},
        {"list", "Print", {}, {{"--sort", "ORDER", "Order"}}, no_run}},
       "list"},
  };
};

TEST_F(CommandLineTest, AGroupAloneStandsForItsMainCommand) {
  EXPECT_EQ(parse({"filters"}).name, "filters.list");
  EXPECT_EQ(parse({"--wait", "3", "filters", "--sort", "name"}).arguments.value("--sort"), "name");
  EXPECT_EQ(parse({"filters", "--sort", "add"}).name, "filters.list");
  EXPECT_EQ(parse({"filters", "--wait", "3", "add", "list"}).name, "filters.add");
  EXPECT_THAT(usage_error({"filters", "ad"}), HasSubstr("no command filters ad"));
  EXPECT_THAT(parse({"filters", "--help"}).help_text, HasSubstr("add"));
}

TEST_F(CommandLineTest, OtherGroupsNeedACommand) {
  expect_usage_error({"config"});
}

TEST_F(CommandLineTest, FindsTheCommand) {
  EXPECT_EQ(parse({"list"}).command->name, "list");
  EXPECT_EQ(parse({"config", "get", "username"}).command->name, "get");
}

TEST_F(CommandLineTest, HandsOverValuesByLongName) {
  const Arguments arguments = parse({"list", "-t", "divx", "--new"}).arguments;
  EXPECT_EQ(arguments.value("--title"), "divx");
  EXPECT_TRUE(arguments.has("--new"));
  EXPECT_FALSE(arguments.has("--sort"));
}

TEST_F(CommandLineTest, ARepeatableOptionTakesOneValueAtATime) {
  const Arguments arguments = parse({"list", "--status", "-1", "--status=0"}).arguments;
  EXPECT_THAT(arguments.values("--status"), ElementsAre("-1", "0"));
  expect_usage_error({"list", "--status", "1", "2"});
}

TEST_F(CommandLineTest, AnyOtherOptionStandsOnce) {
  expect_usage_error({"list", "--title", "a", "--title", "b"});
}

TEST_F(CommandLineTest, AChoiceIsChecked) {
  EXPECT_EQ(parse({"list", "--sort", "title"}).arguments.value("--sort"), "title");
  expect_usage_error({"list", "--sort", "size"});
}

TEST_F(CommandLineTest, ArgumentsAreRequiredOrNotAsDeclared) {
  EXPECT_EQ(parse({"show", "12"}).arguments.required("ID"), "12");
  EXPECT_THAT(parse({"config", "set", "watcher", "a", "b"}).arguments.values("VALUE"),
              ElementsAre("a", "b"));
  EXPECT_THAT(parse({"config", "set", "watcher"}).arguments.values("VALUE"), ElementsAre());
  expect_usage_error({"show"});
  expect_usage_error({"show", "1", "2"});
}

TEST_F(CommandLineTest, AValueMayBeginWithADashBehindTwo) {
  EXPECT_THAT(parse({"config", "set", "watcher", "--", "-x"}).arguments.values("VALUE"),
              ElementsAre("-x"));
}

TEST_F(CommandLineTest, GlobalOptionsStandOnEitherSideOfTheCommand) {
  EXPECT_EQ(parse({"--cache-dir", "/x", "list"}).options.cache_dir, "/x");
  EXPECT_EQ(parse({"list", "--cache-dir", "/x"}).options.cache_dir, "/x");
  EXPECT_EQ(parse({"config", "get", "KEY", "--server", "a:1"}).options.server, "a:1");
  EXPECT_TRUE(parse({"list", "--trace"}).options.trace);
  EXPECT_EQ(parse({"list", "--wait", "3"}).options.wait, std::chrono::seconds(3));
  EXPECT_EQ(parse({"list"}).options.wait, std::chrono::seconds(0));
  expect_usage_error({"list", "--wait", "soon"});
  expect_usage_error({"list", "--wait", "-1"});
}

TEST_F(CommandLineTest, WithoutACommandThereIsAnError) {
  expect_usage_error({});
  expect_usage_error({"config"});
  expect_usage_error({"frobnicate"});
  expect_usage_error({"list", "--frobnicate"});
}

TEST_F(CommandLineTest, NamesAWrongWordAndSuggestsARightOne) {
  EXPECT_THAT(usage_error({"lst"}), StartsWith("no command lst; did you mean list?"));
  EXPECT_THAT(usage_error({"--server", "list", "shwo", "7"}),
              StartsWith("no command shwo; did you mean show?"));
  EXPECT_THAT(usage_error({"config", "gte"}),
              StartsWith("no command config gte; did you mean get"));
  EXPECT_THAT(usage_error({"list", "--titel=x"}),
              StartsWith("no option --titel; did you mean --title?"));
  EXPECT_THAT(usage_error({"list", "--trac"}),
              StartsWith("no option --trac; did you mean --trace"));
  EXPECT_THAT(usage_error({"frobnicate"}), StartsWith("no command frobnicate (see"));
  EXPECT_THAT(usage_error({"list", "--sort", "size"}), Not(HasSubstr("no option")));
}

TEST_F(CommandLineTest, HelpAndVersionAreTexts) {
  EXPECT_EQ(parse({"--help"}).command, nullptr);
  EXPECT_THAT(parse({"--help"}).help_text, HasSubstr("config"));
  EXPECT_THAT(parse({"list", "--help"}).help_text, HasSubstr("--title TEXT"));
  EXPECT_THAT(parse({"config", "set", "--help"}).help_text, HasSubstr("KEY"));
  EXPECT_THAT(parse({"--version"}).help_text, HasSubstr("velkorctl 0"));
}

}  // namespace
}  // namespace velkor::ctl
