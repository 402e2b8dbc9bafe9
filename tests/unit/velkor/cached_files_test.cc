/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/cached_files.h"

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

using State = CachedFile::State;

class CachedFilesTest : public ::testing::Test {
protected:
  void write(const std::string &name, const std::string &content) const {
    test::write_file(sandbox_.home() / name, content);
  }
  [[nodiscard]] std::vector<CachedFile> files(const FileProblems &problems = {}) const {
    return cached_files(sandbox_.home(), problems);
  }

  test::Sandbox sandbox_;
};

TEST_F(CachedFilesTest, AreEachFollowedByThoseThatWereKept) {
  for (const char *name :
       {"velkor.conf", "velkor.mail", "velkor.posts.gz", "velkor.mail.onleesbaar-20261122-120000",
        "velkor.groups.gz.vorige-20261122-120000", "velkor.mail.onleesbaar-20261122-130000",
        "velkor.mail.other", "velkor.mailbox", "notes"})
    write(name, "four");
  std::vector<std::pair<std::string, State>> found;
  for (const CachedFile &file : files()) {
    found.emplace_back(file.name, file.state);
    EXPECT_EQ(file.size, 4);
    EXPECT_GT(file.stamp, 0);
  }
  EXPECT_EQ(found, (std::vector<std::pair<std::string, State>>{
                       {"velkor.conf", State::sound},
                       {"velkor.groups.gz.vorige-20261122-120000", State::kept},
                       {"velkor.mail", State::sound},
                       {"velkor.mail.onleesbaar-20261122-130000", State::kept},
                       {"velkor.mail.onleesbaar-20261122-120000", State::kept},
                       {"velkor.posts.gz", State::sound}}));
}

TEST_F(CachedFilesTest, AreNoneInADirectoryThatIsMissing) {
  EXPECT_TRUE(cached_files(sandbox_.home() / "missing", {}).empty());
}

TEST_F(CachedFilesTest, NeedTheCareOfTheWorst) {
  write("velkor.mail", "");
  write("velkor.posts.gz", "");
  EXPECT_EQ(care_for(files()), CacheCare::none);
  write("velkor.mail.onleesbaar-20261122-120000", "");
  EXPECT_EQ(care_for(files()), CacheCare::kept);
  EXPECT_EQ(care_for(files({{"velkor.mail", "line 1"}})), CacheCare::damaged);
  EXPECT_EQ(care_for(files({{"velkor.posts.gz", "line 1"}})), CacheCare::fetch_spots);
  EXPECT_EQ(files({{"velkor.mail", "line 1"}}).at(0).problem, "line 1");
}

}  // namespace
}  // namespace velkor::app
