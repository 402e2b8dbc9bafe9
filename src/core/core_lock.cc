/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/core_lock.h"

#include <shared_mutex>

#include "support/assertion.h"
#include "support/immortal.h"

namespace velkor {
namespace {

std::shared_mutex &mutex() noexcept {
  return immortal<std::shared_mutex>();
}

/** The guards of this thread that are alive; the outermost holds the mutex. */
thread_local unsigned readers = 0;
thread_local unsigned writers = 0;

}  // namespace

CoreReader::CoreReader() noexcept {
  if (readers++ == 0 && writers == 0)
    mutex().lock_shared();
}

CoreReader::~CoreReader() {
  if (--readers == 0 && writers == 0)
    mutex().unlock_shared();
}

CoreWriter::CoreWriter() noexcept {
  ZOX_ASSERT(readers == 0 || writers > 0);
  if (writers++ == 0)
    mutex().lock();
}

CoreWriter::~CoreWriter() {
  if (--writers == 0)
    mutex().unlock();
}

}  // namespace velkor
