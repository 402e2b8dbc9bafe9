/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/rw_lock.h"

#include <array>
#include <functional>

#include "support/thread_order.h"

G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace velkor {
namespace {

/* The last guard of this thread that is still alive. */
thread_local const HeldLock *innermost = nullptr;

/**
 * The mutex with which GLib guards the fields of the lock, and which it would make by itself at the
 * first use. It is never held for long, so that some of them are enough for locks by the million,
 * and a first walk over all of these need not make one for each.
 */
GMutex *shared_mutex(const RwLock &lock) noexcept {
  static std::array<GMutex, 64> mutexes;
  return &mutexes[std::hash<const void *>{}(&lock) / sizeof lock % mutexes.size()];
}

}  // namespace

void rw_lock_init(RwLock &lock) noexcept {
  g_static_rw_lock_init(&lock);
  lock.mutex.mutex = shared_mutex(lock);
}
void rw_lock_free(RwLock &lock) noexcept {
  lock.mutex.mutex = nullptr;  // it is not the lock's own
  g_static_rw_lock_free(&lock);
}

HeldLock::HeldLock(RwLock &lock, LockMode mode) noexcept
    : lock_(lock), mode_(mode), outer_(innermost) {
  innermost = this;
}

HeldLock::~HeldLock() {
  innermost = outer_;
}

bool HeldLock::holds(const RwLock &lock, LockMode mode) noexcept {
  for (const HeldLock *held = innermost; held != nullptr; held = held->outer_) {
    if (&held->lock_ == &lock && (mode == LockMode::read || held->mode_ == LockMode::write))
      return true;
  }
  return false;
}

ReadLock::ReadLock(RwLock &lock) noexcept : ReadLock(lock, holds(lock, LockMode::read)) {}

ReadLock::ReadLock(RwLock &lock, bool nested) noexcept
    : HeldLock(lock, LockMode::read), nested_(nested) {
  if (nested_)
    return;
  g_static_rw_lock_reader_lock(&lock);
  order_after(&lock);
}

ReadLock::~ReadLock() {
  if (nested_)
    return;
  order_before(&lock());
  g_static_rw_lock_reader_unlock(&lock());
}

WriteLock::WriteLock(RwLock &lock) noexcept : HeldLock(lock, LockMode::write) {
  g_static_rw_lock_writer_lock(&lock);
  order_after(&lock);
}

WriteLock::~WriteLock() {
  order_before(&lock());
  g_static_rw_lock_writer_unlock(&lock());
}

BriefHold::BriefHold(RwLock &lock) noexcept : lock_(lock), mutex_(lock.mutex.mutex) {
  g_mutex_lock(mutex_);
  order_after(&lock_);
}

BriefHold::~BriefHold() {
  order_before(&lock_);
  g_mutex_unlock(mutex_);
}

}  // namespace velkor

G_GNUC_END_IGNORE_DEPRECATIONS
