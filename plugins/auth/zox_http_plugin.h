/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef ZOX_HTTP_PLUGIN_H
#define ZOX_HTTP_PLUGIN_H

#include <glib.h>

G_BEGIN_DECLS

/**
 * The secret that goes with one request, "TIME.NONCE.HASH": the time in seconds since 1970, 32
 * random hexadecimal digits, and the hexadecimal HMAC-SHA256 of "TIME.NONCE.URL" under the
 * password. It does not tell the password, and a server that remembers nonces for a while accepts
 * it once, for this URL only.
 *
 * Keeps no state; may be called by several threads at once.
 *
 * @param url the complete URL, query included; never null
 * @param password never null
 * @return a new text that the caller releases with g_free(); null when the system has no random
 *         bytes to give
 */
char *zox_plugin_auth(const char *url, const GString *password);

G_END_DECLS

#endif
