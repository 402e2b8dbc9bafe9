/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_HTTP_CURL_H
#define VELKOR_ZOX_HTTP_CURL_H

#include <stddef.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef gint (*ZoxMailCallback)(gpointer data);

ZoxErrorCode zox_http_curl_execute(const char *path, GSList *parameters, gint32 useHost,
                                   ZoxString **reply, gint32 authenticate,
                                   char **tempFileName, gint32 requireData);
ZoxErrorCode zox_http_curl_add_auth(const char *url, char **userPassword);
ZoxErrorCode zox_http_curl_done(gint32 transferResult, const ZoxString *body,
                                char **serverText, gint32 requireData);
void         zox_http_curl_set_zox_mail_callback(ZoxMailCallback function, gpointer data);
size_t       zox_curl_write_function(void *chunk, size_t size, size_t count, void *data);
size_t       zox_curl_file_write_function(void *chunk, size_t size, size_t count,
                                          void *fp);   /* int *: the descriptor */

/* Additions to the interface. */
void zox_http_set_hosts(const char *mainHost, const char *staticHost);

typedef gint (*ZoxTransferCallback)(gint64 received, gint64 total, gpointer userData);
void zox_http_set_transfer_callback(ZoxTransferCallback function, gpointer userData);

/* exported by the authentication plug-in, not by the library */
typedef char *(*ZoxPluginAuth)(const char *url, const ZoxString *password);

G_END_DECLS

#endif
