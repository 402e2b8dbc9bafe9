/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "velkorctl/commands.h"

namespace velkor::ctl {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

using Words = std::vector<std::string>;

/** What the command would be asked for. */
std::vector<Candidate> asked(const std::string &name, const std::string &cache_directory) {
  return {{"<" + name + ">" + (cache_directory.empty() ? "" : " in " + cache_directory)}};
}

/** The words that the last one of a line may become. */
Words offered(const Words &words) {
  Words result;
  for (const Candidate &candidate : candidates_for(all_commands(), words, asked))
    result.push_back(candidate.word);
  return result;
}

TEST(Completion, OffersCommands) {
  EXPECT_THAT(offered({""}), AllOf(Contains("update"), Contains("config"), Not(Contains("set"))));
  EXPECT_THAT(offered({"cat"}), ElementsAre("categories"));
  EXPECT_THAT(offered({"--cache-dir", "list", "cat"}), ElementsAre("categories"));
  EXPECT_THAT(offered({}), Contains("update"));
}

TEST(Completion, SaysWhatCommandsDo) {
  const std::vector<Candidate> candidates = candidates_for(all_commands(), {"filt"}, asked);
  ASSERT_EQ(candidates.size(), 1U);
  EXPECT_EQ(candidates[0].about, "The saved filters, which make up the categories");
}

TEST(Completion, OffersTheSecondWordOfAGroup) {
  EXPECT_THAT(offered({"config", "s"}), ElementsAre("set"));
  EXPECT_THAT(offered({"filters", ""}), AllOf(Contains("add"), Contains("import")));
}

TEST(Completion, OffersTheOptionsOfTheCommand) {
  EXPECT_THAT(offered({"list", "--tit"}), ElementsAre("--title"));
  EXPECT_THAT(offered({"config", "set", "--st"}), ElementsAre("--static-server", "--stdin"));
  EXPECT_THAT(offered({"update", "--"}),
              AllOf(Contains("--recursive"), Contains("--trace"), Contains("--help"),
                    Not(Contains("--title")), Each(StartsWith("--"))));
  EXPECT_THAT(offered({"filters", "--so"}), ElementsAre("--sort"));
}

TEST(Completion, OffersTheValuesOfOptions) {
  EXPECT_THAT(offered({"list", "--sort", "t"}), ElementsAre("tags", "title"));
  EXPECT_THAT(offered({"list", "--category", ""}), ElementsAre("<--category>"));
  EXPECT_THAT(offered({"list", "-c", "<"}), ElementsAre("<--category>"));
  EXPECT_THAT(offered({"list", "--color", "a"}), ElementsAre("always", "auto"));
  EXPECT_THAT(offered({"list", "-c", "Beeld", "-s", ""}), ElementsAre("<--sub-category Beeld>"));
}

TEST(Completion, AValueMayStandBehindAnEqualsSign) {
  EXPECT_THAT(offered({"list", "--sort=t"}), ElementsAre("tags", "title"));
  EXPECT_THAT(offered({"list", "--sort", "=", "t"}), ElementsAre("tags", "title"));
  EXPECT_THAT(offered({"list", "--color", "="}), Contains("never"));
  EXPECT_THAT(offered({"list", "--sort=title", "--tit"}), ElementsAre("--title"));
}

TEST(Completion, TheCacheDirectoryOfTheLineCounts) {
  EXPECT_THAT(offered({"--cache-dir", "/a", "list", "--filter", ""}),
              ElementsAre("<--filter> in /a"));
  EXPECT_THAT(offered({"list", "--cache-dir=/a", "--filter", ""}), ElementsAre("<--filter> in /a"));
  EXPECT_THAT(offered({"watch", "--cache-dir", "=", "/a", "remove", ""}),
              ElementsAre("<watch remove ID> in /a"));
}

TEST(Completion, TheCategoryOfTheLineCounts) {
  EXPECT_THAT(offered({"list", "--category=Beeld", "-s", ""}),
              ElementsAre("<--sub-category Beeld>"));
}

TEST(Completion, OffersTheFieldsOfTheCommand) {
  EXPECT_THAT(offered({"list", "--fields", "p"}), ElementsAre("poster"));
  EXPECT_THAT(offered({"list", "--fields", "id,p"}), ElementsAre("id,poster"));
  EXPECT_THAT(offered({"mail", "list", "--sort", "d"}), ElementsAre("date", "direction"));
}

TEST(Completion, OffersTheValuesOfArguments) {
  EXPECT_THAT(offered({"config", "set", ""}), ElementsAre("<config set KEY>"));
  EXPECT_THAT(offered({"config", "set", "x", ""}), ElementsAre("<config set VALUE>"));
  EXPECT_THAT(offered({"watch", "remove", "3", "4", ""}), ElementsAre("<watch remove ID>"));
  EXPECT_THAT(offered({"filters", "rename", "--wait", "3", ""}),
              ElementsAre("<filters rename FILTER>"));
}

TEST(Completion, OffersNothingBehindTheLastArgument) {
  EXPECT_THAT(offered({"show", "3", ""}), IsEmpty());
  EXPECT_THAT(offered({"doctor", ""}), IsEmpty());
}

TEST(Completion, OffersNoOptionsBehindTwoDashes) {
  EXPECT_THAT(offered({"config", "get", "--", "-"}), IsEmpty());
  EXPECT_THAT(offered({"config", "get", "--", ""}), ElementsAre("<config get KEY>"));
}

TEST(Completion, OffersNothingForAnUnknownCommand) {
  EXPECT_THAT(offered({"config", "lst", "x"}), IsEmpty());
}

}  // namespace
}  // namespace velkor::ctl
