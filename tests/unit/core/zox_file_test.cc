/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The directories and the names within them. */
#include <velkor/zox_file.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/owned.h"
#include "tests/support/fresh_process.h"
#include "tests/support/log_capture.h"
#include "tests/support/sandbox.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

std::string taken(char *text) {
  const OwnedText owned(text);
  return owned.get();
}

class ZoxFileDirectories : public testing::Test {
protected:
  ~ZoxFileDirectories() override {
    zox_file_free_lib_dir();
    zox_file_free_data_dir();
    zox_file_free_cache_dir();
  }

  test::Sandbox sandbox;
  test::LogCapture log;
};

TEST_F(ZoxFileDirectories, FollowTheirDefaults) {
  zox_file_set_lib_dir(nullptr);
  zox_file_set_data_dir(nullptr);
  EXPECT_EQ(taken(zox_file_parse_lib_dir(nullptr)), "/usr/lib64");
  EXPECT_EQ(taken(zox_file_parse_data_dir(nullptr)), "/usr/share/velkor");
}

TEST_F(ZoxFileDirectories, PutNothingBetweenNameAndSuffix) {
  zox_file_set_lib_dir("/usr/lib64");
  EXPECT_EQ(taken(zox_file_parse_lib_dir("/x")), "/usr/lib64/x");
  EXPECT_EQ(taken(zox_file_parse_lib_dir("x")), "/usr/lib64x");
  zox_file_set_data_dir("/data");
  EXPECT_EQ(taken(zox_file_parse_data_dir("/x")), "/data/x");
  EXPECT_EQ(taken(zox_file_parse_data_dir("x")), "/datax");
}

TEST_F(ZoxFileDirectories, HoldTheNamesOfFiles) {
  zox_file_set_data_dir("/data");
  EXPECT_EQ(taken(zox_file_parse_data_filename("x")), "/data/x");
  EXPECT_EQ(taken(zox_file_parse_data_filename(nullptr)), "/data");
  const std::string cache = sandbox.cache();
  zox_file_set_cache_dir(cache.c_str());
  EXPECT_EQ(taken(zox_file_parse_cache_filename("x", 0)), cache + "/x");
  EXPECT_EQ(taken(zox_file_parse_cache_filename("x", 1)), cache + "/x.gz");
  EXPECT_EQ(taken(zox_file_parse_cache_filename(nullptr, 0)), cache);
  EXPECT_EQ(taken(zox_file_parse_cache_filename(nullptr, 1)), cache);
}

TEST_F(ZoxFileDirectories, ReplaceTheEarlierNameWhenSetAgain) {
  zox_file_set_lib_dir("/een");
  zox_file_set_lib_dir("/twee");
  EXPECT_EQ(taken(zox_file_parse_lib_dir(nullptr)), "/twee");
}

TEST_F(ZoxFileDirectories, MayBeFreedTwice) {
  zox_file_set_lib_dir("/een");
  zox_file_free_lib_dir();
  zox_file_free_lib_dir();
  zox_file_free_data_dir();
  zox_file_free_cache_dir();
}

class ZoxFileInitCacheDir : public ZoxFileDirectories {
protected:
  /** Checks a cache directory after the one of the fixture was accepted. */
  gint32 check(const fs::path &path) {
    const fs::path link = sandbox.home() / "link";
    fs::create_directory(sandbox.home() / "good");
    fs::create_symlink(sandbox.home() / "good", link);
    zox_file_set_cache_dir(link.c_str());
    fs::remove(link);
    fs::create_symlink(path, link);
    return zox_file_init_cache_dir();
  }
};

TEST_F(ZoxFileInitCacheDir, MakesTheDirectoryForItsOwnerAlone) {
  zox_file_set_cache_dir(sandbox.cache().c_str());
  EXPECT_TRUE(fs::is_directory(sandbox.cache()));
  EXPECT_EQ(fs::status(sandbox.cache()).permissions(), fs::perms{0700});
  EXPECT_EQ(zox_file_init_cache_dir(), 0);
}

TEST_F(ZoxFileInitCacheDir, FollowsALinkAndLeavesNoProbe) {
  const fs::path target = sandbox.home() / "target";
  fs::create_directory(target);
  EXPECT_EQ(check(target), 0);
  EXPECT_TRUE(fs::is_empty(target));
}

TEST_F(ZoxFileInitCacheDir, TellsWhenTheDirectoryCannotBeMade) {
  // A link that leads nowhere: its name is taken, but there is nothing behind it.
  EXPECT_EQ(check(sandbox.home() / "missing" / "deep"), -2);
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_file_init_cache_dir(): mkdir() mislukt: File exists\n"));
}

TEST_F(ZoxFileInitCacheDir, TellsWhenItIsNoDirectory) {
  const fs::path file = sandbox.home() / "file";
  test::write_file(file, "");
  EXPECT_EQ(check(file), -3);
  const std::string link = sandbox.home() / "link";
  EXPECT_THAT(log.warnings(), ElementsAre("zox_file_init_cache_dir(): map " + link +
                                          " bestaat maar is geen directory\n"));
}

TEST_F(ZoxFileInitCacheDir, TellsWhenItCannotBeWritten) {
  const fs::path directory = sandbox.home() / "directory";
  fs::create_directories(directory / "test.dat");  // refuses the probe even to root
  EXPECT_EQ(check(directory), -4);
  const std::string link = sandbox.home() / "link";
  EXPECT_THAT(log.warnings(), ElementsAre("zox_file_init_cache_dir(): de map " + link +
                                          " heeft niet voldoende rechten om in te schrijven!\n"));
}

TEST_F(ZoxFileInitCacheDir, LeavesTheUsersOwnFileOfThatNameAlone) {
  const fs::path own = sandbox.home() / "directory" / "test.dat";
  fs::create_directory(own.parent_path());
  for (const char *content : {"gegevens", ""}) {
    test::write_file(own, content);
    EXPECT_EQ(check(own.parent_path()), 0);
    EXPECT_EQ(test::read_file(own), content);
    fs::remove(sandbox.home() / "link");
    fs::remove_all(sandbox.home() / "good");
  }
}

TEST_F(ZoxFileInitCacheDir, RemovesTheProbeOfAKilledProcess) {
  const fs::path probe = sandbox.home() / "directory" / "test.dat";
  fs::create_directory(probe.parent_path());
  test::write_file(probe, "");
  fs::permissions(probe, fs::perms::none);
  EXPECT_EQ(check(probe.parent_path()), 0);
  EXPECT_FALSE(fs::exists(probe));
}

TEST_F(ZoxFileInitCacheDir, FollowsNoLinkToProbe) {
  const fs::path directory = sandbox.home() / "directory";
  const fs::path victim = sandbox.home() / "victim";
  fs::create_directory(directory);
  fs::create_symlink(victim, directory / "test.dat");
  EXPECT_EQ(check(directory), -4);
  EXPECT_FALSE(fs::exists(victim));
  test::write_file(victim, "gegevens");
  EXPECT_EQ(zox_file_init_cache_dir(), -4);
  EXPECT_EQ(test::read_file(victim), "gegevens");
  EXPECT_TRUE(fs::is_symlink(directory / "test.dat"));
}

TEST_F(ZoxFileInitCacheDir, ProcessesMayProbeAtTheSameTime) {
  const fs::path directory = sandbox.home() / "directory";
  fs::create_directory(directory);
  ASSERT_EQ(check(directory), 0);
  std::atomic<int> failures{0};
  std::vector<std::thread> probing;
  for (int number = 0; number < 4; ++number)
    probing.emplace_back([&failures] {
      for (int round = 0; round < 500; ++round)
        failures += zox_file_init_cache_dir() == 0 ? 0 : 1;
    });
  for (std::thread &thread : probing)
    thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_TRUE(fs::is_empty(directory));
}

using ZoxFileDeathTest = ZoxFileDirectories;

[[noreturn]] void use_default_cache_dir() {
  zox_file_set_cache_dir(nullptr);
  const std::string expected = std::string(std::getenv("HOME")) + "/.velkor";
  const bool good = taken(zox_file_parse_cache_filename(nullptr, 0)) == expected;
  std::_Exit(good && fs::is_directory(expected) ? 0 : 1);
}

TEST_F(ZoxFileDeathTest, HasItsDefaultCacheDirectoryInTheHome) {
  const test::FreshProcess fresh(sandbox);  // GLib asks for the home once
  EXPECT_EXIT(use_default_cache_dir(), testing::ExitedWithCode(0), "");
}

TEST_F(ZoxFileDeathTest, EndsTheProcessWithoutACacheDirectory) {
  const std::string path = sandbox.home() / "missing" / "deep";
  const test::FreshProcess fresh(sandbox);
  EXPECT_DEATH(
      {
        g_log_set_default_handler(g_log_default_handler, nullptr);
        zox_file_set_cache_dir(path.c_str());
      },
      "zox_file_set_cache_dir\\(\\): Aanmaken van .*/missing/deep is mislukt\\.");
}

TEST_F(ZoxFileDeathTest, NeedsItsDirectories) {
  EXPECT_DEATH(zox_file_parse_lib_dir("/x"), "assertion failed: \\(lib_dir\\)");
  EXPECT_DEATH(zox_file_parse_data_dir("/x"), "assertion failed: \\(data_dir\\)");
  EXPECT_DEATH(zox_file_parse_data_filename("x"), "assertion failed: \\(data_dir\\)");
  EXPECT_DEATH(zox_file_parse_cache_filename("x", 0), "assertion failed: \\(cache_dir\\)");
}

}  // namespace
}  // namespace velkor
