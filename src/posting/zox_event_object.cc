/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The locked holder of one posting. */
#include <atomic>
#include <utility>

#include <velkor/zox_event.h>

#include "posting/event_record.h"
#include "posting/packed_event.h"
#include "support/object_type.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

/**
 * Replaces the record held by `object`, releasing the earlier one. A walk may look at the pointer
 * itself without the lock, to fetch what it points to.
 */
void hold(ZOXEventObject &object, PackedEvent event) noexcept {
  const PackedEvent earlier(
      std::atomic_ref(object.event).exchange(event.release(), std::memory_order_relaxed));
}

/** What the object that this thread is making holds from the start; null for a new record. */
thread_local ZoxEvent *first_record = nullptr;

void init(ZOXEventObject &object) noexcept {
  rw_lock_init(object.lock);
  ZoxEvent *record = std::exchange(first_record, nullptr);
  object.event = record != nullptr ? record : pack(fresh_event).release();
}

void finalize(ZOXEventObject &object) noexcept {
  hold(object, nullptr);
  rw_lock_free(object.lock);
}

ZOXEventObject *make_instance() noexcept {
  return static_cast<ZOXEventObject *>(g_object_new(zox_event_object_get_type(), nullptr));
}

}  // namespace

OwnedEventObject new_object(PackedEvent event) noexcept {
  first_record = event.release();
  return OwnedEventObject(make_instance());
}

}  // namespace velkor

using namespace velkor;

extern "C" {

GType zox_event_object_get_type(void) {
  static const GType type = register_object_type<ZOXEventObject, init, finalize>("ZOXEventObject");
  return type;
}

ZOXEventObject *zox_event_object_new(void) {
  return make_instance();
}

void zox_event_object_set_event(ZOXEventObject *object, const ZoxEvent *event) {
  PackedEvent copy = pack(*event);
  const WriteLock lock(object->lock);
  hold(*object, std::move(copy));
}

ZoxEvent *zox_event_object_get_event(ZOXEventObject *object) {
  const ReadLock lock(object->lock);
  return zox_event_duplicate(object->event);
}

void zox_event_object_destroy(ZOXEventObject *object) {
  unref_object(object);
}

}  // extern "C"
