/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** An authentication plug-in with another rule than the reference: the password as it is. */
#include <glib.h>

extern "C" [[gnu::visibility("default")]] char *zox_plugin_auth(const char *,
                                                                const GString *password);

char *zox_plugin_auth(const char *, const GString *password) {
  return g_strdup(password->str);
}
