/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/rw_lock.h"

#include "support/thread_order.h"

G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace velkor {
namespace {

/* The last guard of this thread that is still alive. */
thread_local const HeldLock *innermost = nullptr;

}  // namespace

void rw_lock_init(RwLock &lock) noexcept {
  g_static_rw_lock_init(&lock);
}
void rw_lock_free(RwLock &lock) noexcept {
  g_static_rw_lock_free(&lock);
}

HeldLock::HeldLock(RwLock &lock) noexcept : lock_(lock), outer_(innermost) {
  innermost = this;
}

HeldLock::~HeldLock() {
  innermost = outer_;
}

bool HeldLock::held_already() const noexcept {
  for (const HeldLock *held = outer_; held != nullptr; held = held->outer_) {
    if (&held->lock_ == &lock_)
      return true;
  }
  return false;
}

ReadLock::ReadLock(RwLock &lock) noexcept : HeldLock(lock), nested_(held_already()) {
  if (nested_)
    return;
  g_static_rw_lock_reader_lock(&lock_);
  order_after(&lock_);
}

ReadLock::~ReadLock() {
  if (nested_)
    return;
  order_before(&lock_);
  g_static_rw_lock_reader_unlock(&lock_);
}

WriteLock::WriteLock(RwLock &lock) noexcept : HeldLock(lock) {
  g_static_rw_lock_writer_lock(&lock_);
  order_after(&lock_);
}

WriteLock::~WriteLock() {
  order_before(&lock_);
  g_static_rw_lock_writer_unlock(&lock_);
}

}  // namespace velkor

G_GNUC_END_IGNORE_DEPRECATIONS
