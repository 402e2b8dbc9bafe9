/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox_http_plugin.h"

char *zox_plugin_auth(const char *url, const GString *password) {
  return g_compute_hmac_for_string(
      G_CHECKSUM_SHA256, reinterpret_cast<const guchar *>(password->str), password->len, url, -1);
}
