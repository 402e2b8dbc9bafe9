/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/atomic_file.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "support/descriptor.h"
#include "tests/support/full_disk.h"
#include "tests/support/log_capture.h"
#include "tests/support/sandbox.h"

namespace velkor {
namespace {

/** What this thread did for a file to last, in order. */
thread_local std::vector<std::string> steps;

/** Called once, before this thread locks a file. */
thread_local std::function<void()> before_lock;

}  // namespace
}  // namespace velkor

/** Stand before the system's own functions, so that a test sees what no file shows. */
extern "C" int fsync(int descriptor) {
  struct stat status {};
  fstat(descriptor, &status);
  velkor::steps.emplace_back(S_ISDIR(status.st_mode) ? "sync directory" : "sync file");
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

extern "C" int flock(int descriptor, int operation) noexcept {
  if (const auto action = std::exchange(velkor::before_lock, nullptr))
    action();
  return static_cast<int>(syscall(SYS_flock, descriptor, operation));
}

extern "C" int rename(const char *from, const char *to) noexcept {
  velkor::steps.emplace_back("rename");
  return renameat(AT_FDCWD, from, AT_FDCWD, to);
}

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using Form = AtomicFile::Form;

mode_t mode_of(const fs::path &path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

class AtomicFileTest : public testing::Test {
protected:
  [[nodiscard]] std::size_t files() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory.path()), fs::directory_iterator()));
  }

  test::TemporaryDirectory directory;
  fs::path path = directory.path() / "file";
};

TEST_F(AtomicFileTest, MakesAPlainFile) {
  AtomicFile file(path, Form::plain);
  EXPECT_TRUE(file.write("een"));
  EXPECT_TRUE(file.write(""));
  EXPECT_TRUE(file.write("twee"));
  EXPECT_TRUE(file.commit("test"));
  EXPECT_EQ(test::read_file(path), "eentwee");
  EXPECT_EQ(files(), 1U);
}

TEST_F(AtomicFileTest, MakesAGzipFile) {
  AtomicFile file(path, Form::gzip, 9);
  const std::string text(100000, 'x');
  file.write(text);
  EXPECT_TRUE(file.commit("test"));
  EXPECT_EQ(test::read_gzip(path), text);
  EXPECT_LT(fs::file_size(path), 1000U);
}

TEST_F(AtomicFileTest, MakesAnEmptyFile) {
  EXPECT_TRUE(AtomicFile(path, Form::plain).commit("test"));
  EXPECT_EQ(test::read_file(path), "");
}

TEST_F(AtomicFileTest, MakesItsStartLast) {
  AtomicFile file(path, Form::plain);
  file.write("????rest");
  file.replace_start("head");
  EXPECT_TRUE(file.commit("test"));
  EXPECT_EQ(test::read_file(path), "headrest");
}

TEST_F(AtomicFileTest, TellsWhichFileItHasMade) {
  AtomicFile file(path, Form::plain);
  file.write("een");
  EXPECT_EQ(file.identity(), std::nullopt);
  EXPECT_TRUE(file.commit("test"));
  const Descriptor made(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  ASSERT_TRUE(file.identity());
  EXPECT_EQ(file.identity(), FileIdentity::of(made.get()));
}

TEST_F(AtomicFileTest, HasMadeNoFileAfterAFailure) {
  fs::create_directory(path);
  AtomicFile file(path, Form::plain);
  file.write("een");
  EXPECT_FALSE(file.commit("test"));
  EXPECT_EQ(file.identity(), std::nullopt);
}

TEST_F(AtomicFileTest, KeepsTheOldContentUntilItIsCommitted) {
  test::write_file(path, "oud");
  AtomicFile file(path, Form::plain);
  file.write(std::string(1 << 20, 'n'));
  EXPECT_EQ(test::read_file(path), "oud");
  EXPECT_TRUE(file.commit("test"));
  EXPECT_EQ(test::read_file(path), std::string(1 << 20, 'n'));
}

TEST_F(AtomicFileTest, IsOnTheDiskBeforeItGetsItsName) {
  for (const Form form : {Form::plain, Form::gzip}) {
    AtomicFile file(path, form);
    file.write("tekst");
    steps.clear();
    EXPECT_TRUE(file.commit("test"));
    EXPECT_THAT(steps, ElementsAre("sync file", "rename", "sync directory"));
  }
}

TEST_F(AtomicFileTest, LeavesNoTraceWhenItIsGivenUp) {
  test::write_file(path, "oud");
  {
    AtomicFile file(path, Form::gzip);
    file.write("nieuw");
    EXPECT_EQ(files(), 2U);
  }
  EXPECT_EQ(test::read_file(path), "oud");
  EXPECT_EQ(files(), 1U);
}

TEST_F(AtomicFileTest, FollowsSymbolicLinks) {
  fs::create_directory(directory.path() / "elsewhere");
  const fs::path real = directory.path() / "elsewhere" / "real";
  fs::create_symlink("elsewhere/real", directory.path() / "second");
  fs::create_symlink(directory.path() / "second", path);
  for (const char *text : {"made", "replaced"}) {
    AtomicFile file(path, Form::plain);
    file.write(text);
    EXPECT_TRUE(file.commit("test"));
    EXPECT_EQ(test::read_file(real), text);
  }
  EXPECT_TRUE(fs::is_symlink(path));
}

TEST_F(AtomicFileTest, FollowsNoLinkWhereOthersMayWrite) {
  const fs::path real = directory.path() / "real";
  const fs::path shared = directory.path() / "shared";
  test::write_file(real, "oud");
  fs::create_directory(shared);
  fs::create_symlink(real, shared / "file");
  fs::create_symlink(shared / "file", path);
  for (const unsigned mode : {0777U, 01777U, 0770U, 0702U}) {
    fs::permissions(shared, fs::perms{mode});
    for (const fs::path &name : {shared / "file", path}) {
      AtomicFile file(name, Form::plain);
      EXPECT_EQ(file.error(), ELOOP) << std::oct << mode;
      EXPECT_FALSE(file.commit("test"));
    }
  }
  EXPECT_EQ(test::read_file(real), "oud");
  EXPECT_TRUE(AtomicFile(shared / "own", Form::plain).commit("test"));
  fs::permissions(shared, fs::perms{0755});
  EXPECT_TRUE(AtomicFile(path, Form::plain).commit("test"));
  EXPECT_EQ(test::read_file(real), "");
}

TEST_F(AtomicFileTest, IsLockedWhileItIsWritten) {
  const AtomicFile file(path, Form::gzip);
  const fs::path temporary = fs::directory_iterator(directory.path())->path();
  EXPECT_THAT(temporary.filename().string(),
              testing::MatchesRegex("file\\.tijdelijk-[A-Za-z0-9]{6}"));
  const Descriptor other(open(temporary.c_str(), O_RDWR | O_CLOEXEC));
  EXPECT_EQ(flock(other.get(), LOCK_EX | LOCK_NB), -1);
}

TEST_F(AtomicFileTest, IsMadeAgainWhenItIsTakenForALeftover) {
  before_lock = [this] { fs::remove(fs::directory_iterator(directory.path())->path()); };
  AtomicFile file(path, Form::plain);
  EXPECT_EQ(before_lock, nullptr);
  EXPECT_TRUE(replace_content(file, {"tekst"}, "test"));
  EXPECT_EQ(test::read_file(path), "tekst");
  EXPECT_EQ(files(), 1U);
}

TEST_F(AtomicFileTest, RefusesACircleOfLinks) {
  fs::create_symlink("file", path);
  EXPECT_FALSE(AtomicFile(path, Form::plain).commit("test"));
  EXPECT_TRUE(fs::is_symlink(path));
}

TEST_F(AtomicFileTest, ANewFileIsForItsOwnerAloneWhateverTheUmask) {
  for (const mode_t mask : {0000U, 0027U, 0777U}) {
    const test::Umask during(mask);
    EXPECT_TRUE(AtomicFile(path, Form::plain).commit("test"));
    EXPECT_EQ(mode_of(path), 0600U);
    fs::remove(path);
  }
}

TEST_F(AtomicFileTest, KeepsThePermissionsOfTheOldFile) {
  test::write_file(path, "oud");
  fs::permissions(path, fs::perms{0604});
  EXPECT_TRUE(AtomicFile(path, Form::plain).commit("test"));
  EXPECT_EQ(mode_of(path), 0604U);
}

TEST_F(AtomicFileTest, TakesTheGivenPermissionsWhateverTheUmask) {
  test::write_file(path, "oud");
  fs::permissions(path, fs::perms{0644});
  const test::Umask mask(0777);
  AtomicFile file(path, Form::plain, Z_DEFAULT_COMPRESSION, 0600);
  EXPECT_TRUE(file.commit("test"));
  EXPECT_EQ(mode_of(path), 0600U);
}

TEST_F(AtomicFileTest, NeedsADirectory) {
  AtomicFile file(directory.path() / "missing" / "file", Form::plain);
  EXPECT_EQ(file.error(), ENOENT);
  EXPECT_FALSE(file.write("tekst"));
  EXPECT_FALSE(file.commit("test"));
}

TEST_F(AtomicFileTest, ReplacesOnlyFiles) {
  fs::create_directory(path);
  EXPECT_EQ(AtomicFile(path, Form::plain).error(), EISDIR);
  EXPECT_EQ(AtomicFile("/dev/null", Form::plain).error(), EINVAL);
}

TEST_F(AtomicFileTest, NamesFileAndReasonOfAFailure) {
  const test::LogCapture log;
  AtomicFile file(directory.path() / "missing" / "file", Form::plain);
  EXPECT_FALSE(replace_content(file, {"tekst"}, "caller"));
  EXPECT_THAT(log.warnings(),
              testing::ElementsAre(testing::MatchesRegex(
                  "caller\\(\\): cannot write .*/missing/file: No such file or directory")));
}

TEST_F(AtomicFileTest, ShowsAReaderTheOldContentOrTheNew) {
  const std::string even(300000, 'e');
  const std::string odd(200000, 'o');
  test::write_file(path, even);
  std::atomic<bool> done{false};
  std::size_t broken = 0;
  std::thread reader([&] {
    while (!done) {
      const std::string content = test::read_file(path);
      broken += content != even && content != odd ? 1U : 0U;
    }
  });
  for (int round = 1; round <= 100; ++round) {
    AtomicFile file(path, Form::plain);
    EXPECT_TRUE(replace_content(file, {round % 2 == 0 ? even : odd}, "test"));
  }
  done = true;
  reader.join();
  EXPECT_EQ(broken, 0U);
}

using AtomicFileDeathTest = AtomicFileTest;

/** Ends the process with 0 when the file could not be written for want of space. */
[[noreturn]] void write_on_full_disk(const fs::path &path, Form form) {
  test::fill_disk(1000);
  AtomicFile file(path, form);
  unsigned seed = 1;
  for (int i = 0; i < 100000; ++i)  // does not compress to nothing
    file.write(std::to_string(seed = seed * 1664525U + 1013904223U));
  const bool committed = file.commit("test");
  std::_Exit(!committed && file.error() == EFBIG ? 0 : 1);
}

TEST_F(AtomicFileDeathTest, KeepsTheOldFileWhenTheDiskIsFull) {
  test::write_file(path, "oud");
  for (const Form form : {Form::plain, Form::gzip}) {
    EXPECT_EXIT(write_on_full_disk(path, form), testing::ExitedWithCode(0), "");
    EXPECT_EQ(test::read_file(path), "oud");
  }
}

}  // namespace
}  // namespace velkor
