/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The locked holder of one posting. */
#include <utility>

#include <velkor/zox_event.h>

#include "events/event_fields.h"
#include "events/packed_event.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

/** Replaces the record held by `object`, releasing the earlier one. */
void hold(ZOXEventObject *object, PackedEvent event) noexcept {
  const PackedEvent earlier(std::exchange(object->event, event.release()));
}

void init_instance(GTypeInstance *instance, gpointer) {
  auto *object = reinterpret_cast<ZOXEventObject *>(instance);
  rw_lock_init(object->lock);
  object->event = pack(fresh_event).release();
}

/* The parent's finalize is not called: it has nothing to release here. */
void finalize(GObject *instance) {
  auto *object = reinterpret_cast<ZOXEventObject *>(instance);
  hold(object, nullptr);
  rw_lock_free(object->lock);
}

void init_class(gpointer objectClass, gpointer) {
  static_cast<GObjectClass *>(objectClass)->finalize = finalize;
}

ZOXEventObject *make_instance() noexcept {
  return static_cast<ZOXEventObject *>(g_object_new(zox_event_object_get_type(), nullptr));
}

}  // namespace

ZOXEventObject *new_object(PackedEvent event) noexcept {
  ZOXEventObject *object = make_instance();
  hold(object, std::move(event));
  return object;
}

}  // namespace velkor

using namespace velkor;

extern "C" {

GType zox_event_object_get_type(void) {
  static const GType type = g_type_register_static_simple(
      G_TYPE_OBJECT, "ZOXEventObject", sizeof(GObjectClass), init_class, sizeof(ZOXEventObject),
      init_instance, G_TYPE_FLAG_NONE);
  return type;
}

ZOXEventObject *zox_event_object_new(void) {
  return make_instance();
}

void zox_event_object_set_event(ZOXEventObject *object, const ZoxEvent *event) {
  PackedEvent copy = pack(*event);
  const WriteLock lock(object->lock);
  hold(object, std::move(copy));
}

ZoxEvent *zox_event_object_get_event(ZOXEventObject *object) {
  const ReadLock lock(object->lock);
  return zox_event_duplicate(object->event);
}

void zox_event_object_destroy(ZOXEventObject *object) {
  g_object_unref(object);
}

}  // extern "C"
