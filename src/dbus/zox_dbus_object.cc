/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_dbus.h>

#include <array>
#include <cstdio>

#include "support/assertion.h"

namespace {

enum Signal { bring_to_front, open_posting, signal_count };

std::array<guint, signal_count> signals{};

struct VelkorDBusObjectClass {
  GObjectClass parent;
};

void init_class(gpointer klass, gpointer) {
  const GType type = G_TYPE_FROM_CLASS(klass);
  const auto flags = static_cast<GSignalFlags>(G_SIGNAL_RUN_LAST | G_SIGNAL_DETAILED);
  signals[bring_to_front] = g_signal_new("bring_to_front", type, flags, 0, nullptr, nullptr,
                                         g_cclosure_marshal_VOID__VOID, G_TYPE_NONE, 0);
  signals[open_posting] = g_signal_new("open_posting", type, flags, 0, nullptr, nullptr,
                                       g_cclosure_marshal_VOID__INT, G_TYPE_NONE, 1, G_TYPE_INT);
}

}  // namespace

extern "C" {

GType velkor_dbus_object_get_type(void) {
  static const GType type = g_type_register_static_simple(
      G_TYPE_OBJECT, "VelkorDBusObject", sizeof(VelkorDBusObjectClass), init_class,
      sizeof(VelkorDBusObject), nullptr, static_cast<GTypeFlags>(0));
  return type;
}

gboolean velkor_dbus_bring_to_front(VelkorDBusObject *object, GError **) {
  ZOX_ASSERT(object);
  std::printf("velkor_dbus_bring_to_front\n");
  g_signal_emit(object, signals[bring_to_front], 0);
  return TRUE;
}

gboolean velkor_dbus_open_posting(VelkorDBusObject *object, gint32 postId, GError **) {
  ZOX_ASSERT(object);
  std::printf("velkor_dbus_open_posting(%i)\n", postId);
  g_signal_emit(object, signals[open_posting], 0, postId);
  return TRUE;
}

gint32 velkor_dbus_is_gui(VelkorDBusObject *object) {
  ZOX_ASSERT(object);
  std::printf("velkor_dbus_is_gui\n");
  return object->isGui;
}

}  // extern "C"
