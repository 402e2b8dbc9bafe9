/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The one place that includes dbus-glib, which its makers have deprecated: the described service
 * is bound to its object info and marshallers. Owners for what it hands out.
 */
#ifndef VELKOR_DBUS_DBUS_GLIB_H
#define VELKOR_DBUS_DBUS_GLIB_H

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <dbus/dbus-glib-lowlevel.h>
#include <dbus/dbus-glib.h>
#include <dbus/dbus.h>
#pragma GCC diagnostic pop

#include "support/owned.h"

namespace velkor {

/** One reference on a connection to a message bus. */
using OwnedBus = std::unique_ptr<DBusGConnection, ReleaseWith<dbus_g_connection_unref>>;
using OwnedProxy = OwnedObject<DBusGProxy>;

/** How the exported object looks on the bus: what dbus-glib installs for VelkorDBusObject. */
extern const DBusGObjectInfo velkor_dbus_object_info;

}  // namespace velkor

#endif
