/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/writer_lock.h"

#include <optional>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/sandbox.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

using ::testing::HasSubstr;

class WriterLockTest : public ::testing::Test {
protected:
  test::TemporaryDirectory cache;
};

TEST_F(WriterLockTest, ASecondWriterIsRefusedAndLearnsWhoWrites) {
  const WriterLock first(cache.path(), std::chrono::seconds(0));
  try {
    const WriterLock second(cache.path(), std::chrono::seconds(0));
    ADD_FAILURE() << "locked twice";
  } catch (const Failure &failure) {
    EXPECT_EQ(failure.exit(), Exit::busy);
    EXPECT_THAT(failure.what(), HasSubstr("(process " + std::to_string(getpid()) + ")"));
  }
}

TEST_F(WriterLockTest, TheNextWriterFollowsTheFirst) {
  { const WriterLock first(cache.path(), std::chrono::seconds(0)); }
  EXPECT_NO_THROW(WriterLock(cache.path(), std::chrono::seconds(0)));
}

TEST_F(WriterLockTest, AWaitingWriterGetsItsTurn) {
  std::optional<WriterLock> first(std::in_place, cache.path(), std::chrono::seconds(0));
  bool locked = false;
  std::thread waiting([&] {
    const WriterLock second(cache.path(), std::chrono::hours(1));
    locked = true;
  });
  first.reset();
  waiting.join();
  EXPECT_TRUE(locked);
}

/** The lock file is refused, and what it would have led to is as before. */
void expect_refused(const std::filesystem::path &cache, const std::filesystem::path &victim) {
  try {
    const WriterLock lock(cache, std::chrono::seconds(0));
    ADD_FAILURE() << "locked";
  } catch (const Failure &failure) {
    EXPECT_EQ(failure.exit(), Exit::files);
    EXPECT_THAT(failure.what(), HasSubstr("velkorctl.lock"));
  }
  EXPECT_EQ(test::read_file(victim), "data");
}

TEST_F(WriterLockTest, ALinkOfAnotherUserIsNotWrittenTo) {
  const std::filesystem::path victim = cache.path() / "victim";
  const std::filesystem::path lock = cache.path() / "velkorctl.lock";
  test::write_file(victim, "data");
  std::filesystem::create_symlink(victim, lock);
  expect_refused(cache.path(), victim);
  std::filesystem::remove(lock);
  std::filesystem::create_hard_link(victim, lock);
  expect_refused(cache.path(), victim);
  std::filesystem::remove(lock);
  std::filesystem::create_directory(lock);
  expect_refused(cache.path(), victim);
}

TEST_F(WriterLockTest, ADirectoryThatCannotBeWrittenIsReported) {
  try {
    const WriterLock lock(cache.path() / "missing", std::chrono::seconds(0));
    ADD_FAILURE() << "locked";
  } catch (const Failure &failure) {
    EXPECT_EQ(failure.exit(), Exit::files);
    EXPECT_THAT(failure.what(), HasSubstr("missing"));
  }
}

}  // namespace
}  // namespace velkor::ctl
