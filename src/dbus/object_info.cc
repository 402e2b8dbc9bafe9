/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "dbus/dbus_glib.h"

#include <array>

#include <velkor/zox_dbus.h>

namespace velkor {
namespace {

/** The function to call: the one that dbus-glib hands over, else the closure's own. */
template <typename Function>
Function function_of(GClosure *closure, gpointer marshalData) noexcept {
  if (marshalData != nullptr)
    return reinterpret_cast<Function>(marshalData);
  return reinterpret_cast<Function>(reinterpret_cast<GCClosure *>(closure)->callback);
}

VelkorDBusObject *object_of(const GValue *value) noexcept {
  return static_cast<VelkorDBusObject *>(g_value_peek_pointer(value));
}

GError **error_place_of(const GValue *value) noexcept {
  return static_cast<GError **>(g_value_get_pointer(value));
}

/** For a method that takes nothing but the place for its error. */
void dbus_glib_marshal_velkor_dbus_BOOLEAN__POINTER(GClosure *closure, GValue *return_value,
                                                    guint n_param_values,
                                                    const GValue *param_values, gpointer,
                                                    gpointer marshal_data) {
  g_return_if_fail(return_value != NULL);
  g_return_if_fail(n_param_values == 2);
  const auto call = function_of<decltype(&velkor_dbus_bring_to_front)>(closure, marshal_data);
  g_value_set_boolean(return_value,
                      call(object_of(&param_values[0]), error_place_of(&param_values[1])));
}

/** For a method that takes an integer and the place for its error. */
void dbus_glib_marshal_velkor_dbus_BOOLEAN__INT_POINTER(GClosure *closure, GValue *return_value,
                                                        guint n_param_values,
                                                        const GValue *param_values, gpointer,
                                                        gpointer marshal_data) {
  g_return_if_fail(return_value != NULL);
  g_return_if_fail(n_param_values == 3);
  const auto call = function_of<decltype(&velkor_dbus_open_posting)>(closure, marshal_data);
  g_value_set_boolean(return_value,
                      call(object_of(&param_values[0]), g_value_get_int(&param_values[1]),
                           error_place_of(&param_values[2])));
}

/*
 * Interface, name and "S" for synchronous, then each argument as name, "I" for in and its type; an
 * empty string ends a method. The second method's description begins at open_posting_offset.
 */
constexpr const char *methods_data = "org.Velkor.Velkor\0bringToFront\0S\0\0"
                                     "org.Velkor.Velkor\0openPosting\0S\0postId\0I\0i\0\0";
constexpr int open_posting_offset = sizeof "org.Velkor.Velkor\0bringToFront\0S\0";
constexpr const char *signals_data = "org.Velkor.Velkor\0bring_to_front\0"
                                     "org.Velkor.Velkor\0open_posting\0";

const std::array methods{
    DBusGMethodInfo{G_CALLBACK(velkor_dbus_bring_to_front),
                    dbus_glib_marshal_velkor_dbus_BOOLEAN__POINTER, 0},
    DBusGMethodInfo{G_CALLBACK(velkor_dbus_open_posting),
                    dbus_glib_marshal_velkor_dbus_BOOLEAN__INT_POINTER, open_posting_offset},
};

}  // namespace

const DBusGObjectInfo velkor_dbus_object_info = {
    .format_version = 1,
    .method_infos = methods.data(),
    .n_method_infos = static_cast<int>(methods.size()),
    .data = methods_data,
    .exported_signals = signals_data,
    .exported_properties = "\0",
};

}  // namespace velkor
