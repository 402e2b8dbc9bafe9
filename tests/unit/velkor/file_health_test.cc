/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/file_health.h"

#include <algorithm>

#include <gtest/gtest.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_mail.h>

#include "library/full_update.h"
#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

class FileHealthTest : public ::testing::Test {
protected:
  FileHealthTest() { std::filesystem::create_directory(sandbox_.cache()); }
  ~FileHealthTest() override { zox_app_core_close(); }
  FileHealthTest(const FileHealthTest &) = delete;
  FileHealthTest &operator=(const FileHealthTest &) = delete;

  [[nodiscard]] bool open() {
    const std::string cache = sandbox_.cache();
    ZoxCoreOptions options{};
    options.cacheDir = cache.c_str();
    options.parts = ZOX_CORE_SETTINGS;
    return zox_app_core_open(&options, nullptr) == ZOX_CORE_OPENED;
  }

  [[nodiscard]] std::vector<std::string> damaged() const {
    std::vector<std::string> names;
    for (const CachedFile &file : health_.files())
      if (file.state == CachedFile::State::damaged)
        names.push_back(file.name);
    return names;
  }

  test::Sandbox sandbox_;
  FileHealth health_;
};

TEST_F(FileHealthTest, TellsEveryFileThatCouldNotBeRead) {
  test::write_file(sandbox_.cache() / "velkor.mail", "<Mail><unfinished");
  test::write_file(sandbox_.cache() / "velkor.posts.gz", "no gzip");
  ASSERT_TRUE(open());
  health_.load_parts();
  EXPECT_EQ(damaged(), (std::vector<std::string>{"velkor.mail", "velkor.posts.gz"}));
}

TEST_F(FileHealthTest, TellsThatAFileWasKeptAndItsSuccessorIsInOrder) {
  test::write_file(sandbox_.cache() / "velkor.mail", "<Mail><unfinished");
  ASSERT_TRUE(open());
  health_.load_parts();
  ASSERT_EQ(damaged(), (std::vector<std::string>{"velkor.mail"}));
  ASSERT_EQ(zox_mail_save(), 0);
  health_.note();
  EXPECT_TRUE(damaged().empty());
  EXPECT_EQ(care_for(health_.files()), CacheCare::kept);
}

class FullUpdateTest : public FileHealthTest {
protected:
  void SetUp() override {
    ASSERT_TRUE(open());
    core->config->lastCheck = 20;
    core->config->prevCheck = 10;
    core->config->recursiveUpdate = 0;
  }
};

TEST_F(FullUpdateTest, AsksForEverythingAndLeavesTheTimesWhenItFails) {
  const FullUpdate update;
  EXPECT_EQ(core->config->lastCheck, 0);
  EXPECT_EQ(core->config->recursiveUpdate, 1);
  update.end();
  EXPECT_EQ(core->config->lastCheck, 20);
  EXPECT_EQ(core->config->prevCheck, 10);
  EXPECT_EQ(core->config->recursiveUpdate, 0);
}

TEST_F(FullUpdateTest, LeavesNewWhatCameSinceTheLastUpdate) {
  const FullUpdate update;
  core->config->prevCheck = 0;  // as an update leaves them that asked for everything
  core->config->lastCheck = 30;
  update.end();
  EXPECT_EQ(core->config->lastCheck, 30);
  EXPECT_EQ(core->config->prevCheck, 20);
  EXPECT_NE(test::read_file(sandbox_.cache() / "velkor.conf").find("prevCheck=20\n"),
            std::string::npos);
}

}  // namespace
}  // namespace velkor::app
