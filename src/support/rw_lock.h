/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Guards over GLib's static reader/writer lock. GLib has deprecated that lock; the object records
 * of the C interface hold it in a fixed place, so it is used here and nowhere else.
 *
 * A thread may read again what it holds already, for reading or for writing: callbacks run while a
 * lock is held and may ask for more, and GLib's lock by itself would wait for its own thread.
 */
#ifndef VELKOR_SUPPORT_RW_LOCK_H
#define VELKOR_SUPPORT_RW_LOCK_H

#include <glib.h>

#include "support/assertion.h"

G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace velkor {

using RwLock = GStaticRWLock;

void rw_lock_init(RwLock &lock) noexcept;
void rw_lock_free(RwLock &lock) noexcept;

enum class LockMode { read, write };

/** A lock that the current thread holds; the guards of a thread form a chain, innermost first. */
class HeldLock {
public:
  HeldLock(const HeldLock &) = delete;
  HeldLock &operator=(const HeldLock &) = delete;

  /** Whether the current thread holds the lock in that mode; one held for writing may be read. */
  static bool holds(const RwLock &lock, LockMode mode) noexcept;

protected:
  HeldLock(RwLock &lock, LockMode mode) noexcept;
  ~HeldLock();

  [[nodiscard]] RwLock &lock() const noexcept { return lock_; }

private:
  RwLock &lock_;
  const LockMode mode_;
  const HeldLock *const outer_;
};

/** Holds the lock for reading while it lives; readers share. */
class ReadLock : HeldLock {
public:
  explicit ReadLock(RwLock &lock) noexcept;
  ~ReadLock();

private:
  ReadLock(RwLock &lock, bool nested) noexcept;

  const bool nested_;
};

/** Holds the lock for writing while it lives; it excludes everybody else. */
class WriteLock : HeldLock {
public:
  explicit WriteLock(RwLock &lock) noexcept;
  ~WriteLock();
};

/**
 * Keeps every thread from taking or releasing the lock while it lives: half the cost of a ReadLock,
 * for reading a few fields of very many records. Whoever holds it takes no other lock and calls
 * nothing that might.
 */
class BriefHold {
public:
  explicit BriefHold(RwLock &lock) noexcept;
  ~BriefHold();
  BriefHold(const BriefHold &) = delete;
  BriefHold &operator=(const BriefHold &) = delete;

  /** Whether nobody holds the lock for writing. */
  [[nodiscard]] bool readable() const noexcept { return lock_.have_writer == FALSE; }

private:
  RwLock &lock_;
  GMutex *const mutex_;
};

/** What `read` returns, which reads a few fields under the lock under the rules of BriefHold. */
template <typename Read>
auto read_briefly(RwLock &lock, Read read) noexcept {
  {
    const BriefHold held(lock);
    if (held.readable())
      return read();
  }
  const ReadLock held(lock);
  return read();
}

/** In debug builds, aborts unless the current thread holds the lock for reading or writing. */
inline void assert_held([[maybe_unused]] const RwLock &lock) noexcept {
#ifndef NDEBUG
  ZOX_ASSERT(HeldLock::holds(lock, LockMode::read));
#endif
}

/** In debug builds, aborts unless the current thread holds the lock for writing. */
inline void assert_held_for_writing([[maybe_unused]] const RwLock &lock) noexcept {
#ifndef NDEBUG
  ZOX_ASSERT(HeldLock::holds(lock, LockMode::write));
#endif
}

}  // namespace velkor

G_GNUC_END_IGNORE_DEPRECATIONS

#endif
