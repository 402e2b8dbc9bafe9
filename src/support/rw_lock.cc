/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/rw_lock.h"

#include "support/thread_order.h"

G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace velkor {

void rw_lock_init(RwLock &lock) noexcept {
  g_static_rw_lock_init(&lock);
}
void rw_lock_free(RwLock &lock) noexcept {
  g_static_rw_lock_free(&lock);
}

ReadLock::ReadLock(RwLock &lock) noexcept : lock_(lock) {
  g_static_rw_lock_reader_lock(&lock_);
  order_after(&lock_);
}

ReadLock::~ReadLock() {
  order_before(&lock_);
  g_static_rw_lock_reader_unlock(&lock_);
}

WriteLock::WriteLock(RwLock &lock) noexcept : lock_(lock) {
  g_static_rw_lock_writer_lock(&lock_);
  order_after(&lock_);
}

WriteLock::~WriteLock() {
  order_before(&lock_);
  g_static_rw_lock_writer_unlock(&lock_);
}

}  // namespace velkor

G_GNUC_END_IGNORE_DEPRECATIONS
