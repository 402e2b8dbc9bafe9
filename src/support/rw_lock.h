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

G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace velkor {

using RwLock = GStaticRWLock;

void rw_lock_init(RwLock &lock) noexcept;
void rw_lock_free(RwLock &lock) noexcept;

/** A lock that the current thread holds; the guards of a thread form a chain, innermost first. */
class HeldLock {
public:
  HeldLock(const HeldLock &) = delete;
  HeldLock &operator=(const HeldLock &) = delete;

protected:
  explicit HeldLock(RwLock &lock) noexcept;
  ~HeldLock();

  /** Whether a guard further out holds the same lock. */
  [[nodiscard]] bool held_already() const noexcept;

  RwLock &lock_;

private:
  const HeldLock *const outer_;
};

/** Holds the lock for reading while it lives; readers share. */
class ReadLock : HeldLock {
public:
  explicit ReadLock(RwLock &lock) noexcept;
  ~ReadLock();

private:
  const bool nested_;
};

/** Holds the lock for writing while it lives; it excludes everybody else. */
class WriteLock : HeldLock {
public:
  explicit WriteLock(RwLock &lock) noexcept;
  ~WriteLock();
};

}  // namespace velkor

G_GNUC_END_IGNORE_DEPRECATIONS

#endif
