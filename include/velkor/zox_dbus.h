/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_DBUS_H
#define VELKOR_ZOX_DBUS_H

#include <glib-object.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _VelkorDBusObject {
  GObject parent;
  char   *dbusArgument;
  gint32  isGui;
} VelkorDBusObject;

gint32            zox_dbus_initialize(gint32 isGui, const char *dbusArgument,
                                      gint32 *alreadyActive, char **errorMessage);
VelkorDBusObject *zox_dbus_get_object(void);
void              zox_dbus_cleanup(void);
GType             velkor_dbus_object_get_type(void);
gboolean          velkor_dbus_bring_to_front(VelkorDBusObject *object, GError **error);
gboolean          velkor_dbus_open_posting(VelkorDBusObject *object, gint32 postId,
                                           GError **error);
gint32            velkor_dbus_is_gui(VelkorDBusObject *object);

G_END_DECLS

#endif
