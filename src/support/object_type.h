/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Classes of the GObject type system that hold one lock and what it guards. */
#ifndef VELKOR_SUPPORT_OBJECT_TYPE_H
#define VELKOR_SUPPORT_OBJECT_TYPE_H

#include <glib-object.h>

#include "support/thread_order.h"

namespace velkor {

/**
 * Gives up one reference on an instance of a registered class. Whichever thread gives up the last
 * one finalizes the instance, after all that the others did with it.
 */
inline void unref_object(gpointer instance) noexcept {
  order_before(instance);
  g_object_unref(instance);
}

/**
 * Registers a class derived directly from GObject. It overrides finalize alone, without chaining
 * up: `Finalize` releases what the instance's own fields hold. The data that others have attached
 * is released here; GLib itself attaches some at the last unref.
 */
template <typename Instance, void (*Init)(Instance &), void (*Finalize)(Instance &)>
GType register_object_type(const char *name) noexcept {
  constexpr GClassInitFunc class_init = [](gpointer objectClass, gpointer) {
    static_cast<GObjectClass *>(objectClass)->finalize = [](GObject *object) {
      order_after(object);
      Finalize(*reinterpret_cast<Instance *>(object));
      g_datalist_clear(&object->qdata);
    };
  };
  constexpr GInstanceInitFunc instance_init = [](GTypeInstance *instance, gpointer) {
    Init(*reinterpret_cast<Instance *>(instance));
  };
  return g_type_register_static_simple(G_TYPE_OBJECT, name, sizeof(GObjectClass), class_init,
                                       sizeof(Instance), instance_init, GTypeFlags{});
}

/** Whether `object` is an instance of `type`; null is none. */
inline bool is_instance(gpointer object, GType type) noexcept {
  return g_type_check_instance_is_a(static_cast<GTypeInstance *>(object), type) != FALSE;
}

}  // namespace velkor

#endif
