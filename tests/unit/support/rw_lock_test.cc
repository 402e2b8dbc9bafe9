/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/rw_lock.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace velkor {
namespace {

class RwLockTest : public testing::Test {
protected:
  RwLockTest() { rw_lock_init(lock); }
  ~RwLockTest() override { rw_lock_free(lock); }

  /** Whether another thread could take the lock for reading right now. */
  bool readable_elsewhere() {
    gboolean taken = FALSE;
    std::thread([&] {
      G_GNUC_BEGIN_IGNORE_DEPRECATIONS
      taken = g_static_rw_lock_reader_trylock(&lock);
      if (taken)
        g_static_rw_lock_reader_unlock(&lock);
      G_GNUC_END_IGNORE_DEPRECATIONS
    }).join();
    return taken != FALSE;
  }

  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  RwLock lock;
  G_GNUC_END_IGNORE_DEPRECATIONS
};

TEST_F(RwLockTest, WriterExcludesOthersUntilItsEnd) {
  {
    const WriteLock held(lock);
    EXPECT_FALSE(readable_elsewhere());
  }
  EXPECT_TRUE(readable_elsewhere());
}

TEST_F(RwLockTest, ThreadReadsWhatItHoldsForWriting) {
  const WriteLock held(lock);
  { const ReadLock nested(lock); }
  EXPECT_FALSE(readable_elsewhere());
}

TEST_F(RwLockTest, ThreadReadsAgainWhileAWriterWaits) {
  std::thread writer;
  {
    const ReadLock held(lock);
    writer = std::thread([this] { const WriteLock waiting(lock); });
    // Readers queue behind a waiting writer: from then on a second lock would never be had.
    while (readable_elsewhere())
      std::this_thread::yield();
    const ReadLock nested(lock);
  }
  writer.join();
  EXPECT_TRUE(readable_elsewhere());
}

TEST_F(RwLockTest, ReaderOfAnotherLockTakesItsOwn) {
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  RwLock other;
  G_GNUC_END_IGNORE_DEPRECATIONS
  rw_lock_init(other);
  {
    const WriteLock outer(other);
    const WriteLock held(lock);
    EXPECT_FALSE(readable_elsewhere());
  }
  rw_lock_free(other);
}

TEST_F(RwLockTest, BriefReadKeepsWritersAway) {
  std::atomic<bool> written = false;
  std::thread writer;
  const bool written_meanwhile = read_briefly(lock, [&] {
    writer = std::thread([&] {
      const WriteLock writing(lock);
      written = true;
    });
    for (int turn = 0; turn < 1000; ++turn)
      std::this_thread::yield();
    return written.load();
  });
  writer.join();
  EXPECT_FALSE(written_meanwhile);
  EXPECT_TRUE(written);
}

TEST_F(RwLockTest, BriefReadWaitsForAWriter) {
  int value = 1;
  std::atomic<bool> held = false;
  std::thread writer([&] {
    const WriteLock writing(lock);
    held = true;
    for (int turn = 0; turn < 1000; ++turn)
      std::this_thread::yield();
    value = 2;
  });
  while (!held)
    std::this_thread::yield();
  EXPECT_EQ(read_briefly(lock, [&value] { return value; }), 2);
  writer.join();
}

TEST_F(RwLockTest, ThreadReadsBrieflyWhatItHolds) {
  const auto seven = [] { return 7; };
  {
    const ReadLock held(lock);
    EXPECT_EQ(read_briefly(lock, seven), 7);
  }
  const WriteLock held(lock);
  EXPECT_EQ(read_briefly(lock, seven), 7);
  EXPECT_FALSE(readable_elsewhere());
}

TEST_F(RwLockTest, LocksAreApartHoweverManyThereAre) {
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  std::vector<RwLock> others(1000);
  G_GNUC_END_IGNORE_DEPRECATIONS
  std::ranges::for_each(others, rw_lock_init);
  int taken = 0;
  {
    const WriteLock held(lock);
    std::thread([&] {
      for (auto &other : others) {
        const WriteLock writing(other);
        ++taken;
      }
    }).join();
    EXPECT_FALSE(readable_elsewhere());
  }
  EXPECT_EQ(taken, 1000);
  EXPECT_TRUE(readable_elsewhere());
  std::ranges::for_each(others, rw_lock_free);
}

#ifndef NDEBUG
using RwLockDeathTest = RwLockTest;

TEST_F(RwLockDeathTest, DebugBuildsAssertWhatIsHeld) {
  EXPECT_DEATH(assert_held(lock), "assertion failed");
  {
    const ReadLock held(lock);
    assert_held(lock);
    EXPECT_DEATH(assert_held_for_writing(lock), "assertion failed");
  }
  const WriteLock held(lock);
  assert_held(lock);
  assert_held_for_writing(lock);
}
#endif

}  // namespace
}  // namespace velkor
