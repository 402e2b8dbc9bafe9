/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/backup.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/zox_file.h>
#include <velkor/zox_string.h>

#include "support/owned.h"
#include "tests/support/core_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;

class BackupTest : public test::CoreTest {
protected:
  static void save(const char *content, bool compressed = false) {
    const OwnedString text(zox_string_new(content));
    zox_file_save("cache", text.get(), compressed ? 1 : 0);
  }

  /** The contents of the backups, in the order of their names. */
  [[nodiscard]] std::vector<std::string> kept(const char *mark = ".onleesbaar-") const {
    std::vector<fs::path> paths;
    for (const auto &entry : fs::directory_iterator(sandbox.cache())) {
      if (entry.path().filename().string().find(mark) != std::string::npos)
        paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    std::vector<std::string> contents;
    std::ranges::transform(paths, std::back_inserter(contents), test::read_file);
    return contents;
  }

  test::LogCapture log;
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(BackupTest, IsWhatCouldNotBeRead) {
  test::write_file(cache_file("cache"), "stuk");
  note_unreadable("cache", false);
  save("nieuw");
  EXPECT_EQ(test::read_file(cache_file("cache")), "nieuw\n");
  EXPECT_THAT(kept(), ElementsAre("stuk"));
  EXPECT_THAT(log.warnings(),
              ElementsAre(testing::ContainsRegex("^zox_file_save\\(\\): .*/cache was onleesbaar en "
                                                 "blijft bewaard als .*/cache\\.onleesbaar-"
                                                 "[0-9]{8}-[0-9]{6}$")));
}

TEST_F(BackupTest, IsKeptOnce) {
  test::write_file(cache_file("cache"), "stuk");
  note_unreadable("cache", false);
  save("een");
  save("twee");
  EXPECT_THAT(kept(), ElementsAre("stuk"));
}

TEST_F(BackupTest, DoesNotReplaceWhatWasKeptEarlier) {
  for (const char *content : {"een", "twee", "drie"}) {
    test::write_file(cache_file("cache"), content);
    note_unreadable("cache", false);
    save("nieuw");
  }
  EXPECT_THAT(kept(), testing::UnorderedElementsAre("een", "twee", "drie"));
}

TEST_F(BackupTest, IsTheFileOfExactlyThatForm) {
  test::write_file(cache_file("cache"), "stuk");
  note_unreadable("cache", false);
  save("nieuw", true);
  EXPECT_THAT(kept(), IsEmpty());
  save("nieuw", false);
  EXPECT_THAT(kept(), ElementsAre("stuk"));
}

TEST_F(BackupTest, IsNothingThatWasReadAfterAll) {
  test::write_file(cache_file("cache"), "goed");
  note_unreadable("cache", false);
  note_readable("cache", false);
  save("nieuw");
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(BackupTest, IsNeitherAMissingNorAnEmptyFile) {
  note_unreadable("cache", false);
  test::write_file(cache_file("cache"), "gemaakt");
  save("nieuw");
  test::write_file(cache_file("cache"), "");
  note_unreadable("cache", false);
  save("nieuw");
  EXPECT_THAT(kept(), IsEmpty());
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(BackupTest, IsWhatAnEmptyFileWouldReplace) {
  test::write_file(cache_file("cache"), "goed");
  note_emptied("cache", false);
  save("leeg");
  save("leeg");
  EXPECT_THAT(kept(".vorige-"), ElementsAre("goed"));
  EXPECT_THAT(kept(), IsEmpty());
  EXPECT_THAT(log.warnings(),
              ElementsAre(testing::ContainsRegex(
                  "^zox_file_save\\(\\): .*/cache wordt vervangen door een leeg bestand en "
                  "blijft bewaard als .*/cache\\.vorige-")));
}

TEST_F(BackupTest, UnreadableStaysTheReason) {
  test::write_file(cache_file("cache"), "stuk");
  note_unreadable("cache", false);
  note_emptied("cache", false);
  save("leeg");
  EXPECT_THAT(kept(), ElementsAre("stuk"));
  EXPECT_THAT(kept(".vorige-"), IsEmpty());
}

TEST_F(BackupTest, KeepsItsPermissions) {
  test::write_file(cache_file("cache"), "stuk");
  fs::permissions(cache_file("cache"), fs::perms{0600});
  note_unreadable("cache", false);
  save("nieuw");
  for (const auto &entry : fs::directory_iterator(sandbox.cache()))
    EXPECT_EQ(entry.status().permissions(), fs::perms{0600}) << entry;
}

}  // namespace
}  // namespace velkor
