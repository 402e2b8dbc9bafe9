/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Guards over GLib's static reader/writer lock. GLib has deprecated that lock; the object records
 * of the C interface hold it in a fixed place, so it is used here and nowhere else.
 */
#ifndef VELKOR_SUPPORT_RW_LOCK_H
#define VELKOR_SUPPORT_RW_LOCK_H

#include <glib.h>

G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace velkor {

using RwLock = GStaticRWLock;

void rw_lock_init(RwLock &lock) noexcept;
void rw_lock_free(RwLock &lock) noexcept;

/** Holds the lock for reading while it lives; readers share. */
class ReadLock {
public:
  explicit ReadLock(RwLock &lock) noexcept;
  ~ReadLock();
  ReadLock(const ReadLock &) = delete;
  ReadLock &operator=(const ReadLock &) = delete;

private:
  RwLock &lock_;
};

/** Holds the lock for writing while it lives; it excludes everybody else. */
class WriteLock {
public:
  explicit WriteLock(RwLock &lock) noexcept;
  ~WriteLock();
  WriteLock(const WriteLock &) = delete;
  WriteLock &operator=(const WriteLock &) = delete;

private:
  RwLock &lock_;
};

}  // namespace velkor

G_GNUC_END_IGNORE_DEPRECATIONS

#endif
