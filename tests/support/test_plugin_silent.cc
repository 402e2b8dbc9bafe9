/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** An authentication plug-in that violates its contract: it returns no secret. */
#include <gmodule.h>

#include <velkor/zox_http_curl.h>

extern "C" G_MODULE_EXPORT char *zox_plugin_auth(const char *url, const ZoxString *password);

char *zox_plugin_auth(const char *, const ZoxString *) {
  return nullptr;
}
