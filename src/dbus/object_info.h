/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How the exported object looks on the bus: its interface, methods and signals. */
#ifndef VELKOR_DBUS_OBJECT_INFO_H
#define VELKOR_DBUS_OBJECT_INFO_H

#include "dbus/dbus_glib.h"

namespace velkor {

/** The object info of VelkorDBusObject, in the form that dbus-glib installs for a type. */
extern const DBusGObjectInfo velkor_dbus_object_info;

}  // namespace velkor

#endif
