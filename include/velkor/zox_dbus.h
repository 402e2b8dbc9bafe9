/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The D-Bus service that keeps one instance per user running: name "org.Velkor.Velkor", object
 * "/org/Velkor/Velkor/object" on the session bus, with the methods bringToFront and openPosting.
 *
 * Calls from the bus arrive through the default main loop. None of these functions needs the core.
 * Threads: one at a time, hand-over allowed.
 */
#ifndef VELKOR_ZOX_DBUS_H
#define VELKOR_ZOX_DBUS_H

#include <glib-object.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * The exported object; GObject type "VelkorDBusObject". The front end connects to its signals
 * "bring_to_front" (no parameter) and "open_posting" (a gint: the post id).
 */
typedef struct _VelkorDBusObject {
  GObject parent;     /**< the reference count */
  char *dbusArgument; /**< the front end's text, owned; null after zox_dbus_cleanup() */
  gint32 isGui;       /**< the front end's number */
} VelkorDBusObject;

/**
 * Asks a running instance to come to the front; when there is none, claims the name and exports
 * the object. An instance that is too busy to answer is waited for as long as the bus library does
 * by default, 25 seconds, and then counts as running. Asserts "proxy". zox_app_core_init() calls
 * it.
 * @param isGui          kept on the object
 * @param dbusArgument   copied onto the object; may be null
 * @param alreadyActive  receives 1 when another instance runs, else 0; may be null
 * @param errorMessage   receives a message when there is no bus or the name cannot be asked for;
 *                       may be null; otherwise untouched
 * @return 1 when this process now exports the object, else 0
 */
gint32 zox_dbus_initialize(gint32 isGui, const char *dbusArgument, gint32 *alreadyActive,
                           char **errorMessage);

/**
 * @return the exported object, which stays the library's; null before it is exported and after
 *         zox_dbus_cleanup()
 */
VelkorDBusObject *zox_dbus_get_object(void);

/** Releases the object; harmless when there is none. The name goes with the process. */
void zox_dbus_cleanup(void);

/**
 * Registers the type on its first call.
 * @return the type "VelkorDBusObject"
 */
GType velkor_dbus_object_get_type(void);

/**
 * Handles the method bringToFront: prints a trace line and emits "bring_to_front".
 * @param object  the object
 * @param error   not used; may be null
 * @return TRUE
 */
gboolean velkor_dbus_bring_to_front(VelkorDBusObject *object, GError **error);

/**
 * Handles the method openPosting: prints a trace line and emits "open_posting".
 * @param object  the object
 * @param postId  id of the posting
 * @param error   not used; may be null
 * @return TRUE
 */
gboolean velkor_dbus_open_posting(VelkorDBusObject *object, gint32 postId, GError **error);

/**
 * Prints a trace line; not exported on the bus.
 * @param object  the object
 * @return the number given to zox_dbus_initialize()
 */
gint32 velkor_dbus_is_gui(VelkorDBusObject *object);

G_END_DECLS

#endif
