/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/child_process.h"
#include "tests/support/sandbox.h"
#include "velkorctl/commands.h"

namespace velkor::ctl {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

/** What bash offers for a line whose last word is being typed. */
class CompletionTest : public ::testing::Test {
protected:
  std::string offered(const std::string &line) {
    test::write_file(script, bash_completion(all_commands()));
    test::ChildProcess bash({"bash", "-c",
                             "source " + script.string() + "; COMP_WORDS=(" + line +
                                 "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _velkorctl; "
                                 "echo \" ${COMPREPLY[*]} \""});
    return bash.read_rest();
  }

private:
  test::TemporaryDirectory directory_;
  std::filesystem::path script = directory_.path() / "velkorctl.bash";
};

TEST_F(CompletionTest, OffersCommands) {
  EXPECT_THAT(offered("velkorctl ''"), AllOf(HasSubstr(" update "), HasSubstr(" config ")));
  EXPECT_EQ(offered("velkorctl cat"), " categories \n");
  EXPECT_EQ(offered("velkorctl --cache-dir list cat"), " categories \n");
}

TEST_F(CompletionTest, OffersTheSecondWordOfAGroup) {
  EXPECT_EQ(offered("velkorctl config s"), " set \n");
}

TEST_F(CompletionTest, OffersTheOptionsOfTheCommand) {
  EXPECT_EQ(offered("velkorctl list --tit"), " --title \n");
  EXPECT_EQ(offered("velkorctl config set --st"), " --stdin --static-server \n");
  EXPECT_THAT(offered("velkorctl update --"),
              AllOf(HasSubstr(" --recursive "), HasSubstr(" --trace "), Not(HasSubstr("title"))));
}

TEST_F(CompletionTest, OffersTheValuesThatAreKnown) {
  EXPECT_EQ(offered("velkorctl list --sort t"), " tags title \n");
  EXPECT_EQ(offered("velkorctl list --category B"), " Beeld \n");
  EXPECT_EQ(offered("velkorctl list --color a"), " always auto \n");
}

TEST_F(CompletionTest, OffersTheFieldsOfTheCommand) {
  EXPECT_EQ(offered("velkorctl list --fields p"), " poster \n");
  EXPECT_EQ(offered("velkorctl mail list --sort d"), " date direction \n");
}

}  // namespace
}  // namespace velkor::ctl
