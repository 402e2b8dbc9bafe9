/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef ZOX_HTTP_PLUGIN_H
#define ZOX_HTTP_PLUGIN_H

#include <glib.h>

G_BEGIN_DECLS

/**
 * The secret that goes with one request: the hexadecimal HMAC-SHA256 of its complete URL under the
 * password. It cannot be used for another request and does not tell the password.
 *
 * Keeps no state; may be called by several threads at once.
 *
 * @param url the complete URL, query included; never null
 * @param password never null
 * @return a new text that the caller releases with g_free()
 */
char *zox_plugin_auth(const char *url, const GString *password);

G_END_DECLS

#endif
