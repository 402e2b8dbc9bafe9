/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filter.h>

#include <utility>

#include "filter/filter_record.h"
#include "support/object_type.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

void init(ZOXFilterObject &object) noexcept {
  rw_lock_init(object.lock);
  object.filter = zox_filter_new_filter();
}

void finalize(ZOXFilterObject &object) noexcept {
  {
    const WriteLock lock(object.lock);
    zox_filter_free_filter(std::exchange(object.filter, nullptr));
  }
  rw_lock_free(object.lock);
}

bool is_filter_object(ZOXFilterObject *object) noexcept {
  return is_instance(object, zox_filter_object_get_type());
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

GType zox_filter_object_get_type(void) {
  static const GType type =
      register_object_type<ZOXFilterObject, init, finalize>("ZOXFilterObject");
  return type;
}

ZOXFilterObject *zox_filter_object_new(void) {
  return static_cast<ZOXFilterObject *>(g_object_new(zox_filter_object_get_type(), nullptr));
}

void zox_filter_object_set_filter(ZOXFilterObject *object, const ZoxFilter *filter) {
  g_return_if_fail(is_filter_object(object));
  OwnedFilter copy(zox_filter_duplicate(filter));
  const WriteLock lock(object->lock);
  const OwnedFilter earlier(std::exchange(object->filter, copy.release()));
}

ZoxFilter *zox_filter_object_get_filter(ZOXFilterObject *object) {
  g_return_val_if_fail(is_filter_object(object), nullptr);
  const ReadLock lock(object->lock);
  return zox_filter_duplicate(object->filter);
}

guint32 zox_filter_object_get_filter_postid(ZOXFilterObject *object) {
  g_return_val_if_fail(is_filter_object(object), 0);
  const ReadLock lock(object->lock);
  return object->filter->postId;
}

gboolean zox_filter_object_accepts(ZOXFilterObject *object, const ZoxEvent *event,
                                   guint32 groupMode) {
  g_return_val_if_fail(is_filter_object(object), FALSE);
  const ReadLock lock(object->lock);
  return zox_filter_accepts(object->filter, event, groupMode);
}

void zox_filter_object_destroy(ZOXFilterObject *object) {
  g_return_if_fail(is_filter_object(object));
  unref_object(object);
}

}  // extern "C"
