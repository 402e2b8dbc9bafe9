/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Requests to the ZOX server: one blocking HTTP GET, its credentials, and the result code.
 *
 * A request takes the account and the proxy from the settings as they are when it starts. They may
 * be changed by the functions of zox_settings.h meanwhile; the fields of `core->config` themselves
 * only while no request starts on another thread.
 */
#ifndef VELKOR_ZOX_HTTP_CURL_H
#define VELKOR_ZOX_HTTP_CURL_H

#include <stddef.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * The mail hook: asks the front end to look for new private mail.
 * @param data  the data given to zox_http_curl_set_zox_mail_callback()
 * @return ignored
 */
typedef gint (*ZoxMailCallback)(gpointer data);

/**
 * Executes one request and waits for its end. The connection may take 20 seconds; the transfer has
 * no time limit. Redirects are not followed; a gzip-encoded reply is decompressed. A reply of more
 * than 256 MiB ends the transfer with a write error, in memory (code 18) and into a file (code 1);
 * zox_http_last_failure() tells so. The proxy is used when both `proxyHost` and `proxyPort` are
 * set. After every request that reached the server or failed trying, the mail hook runs on the
 * calling thread if more than 300 seconds have passed since it last ran. Asserts "url" (`path`) and
 * "core->config"; with `authenticate` also "core->config->username". Threads: any.
 * @param path          path on the server, such as "/3.7.3/xml-mail.php"; a whole URL when
 *                      `useHost` is 0
 * @param parameters    of ZoxHttpParameter, in the order in which they are sent; may be null
 * @param useHost       non-zero to put "http://" and a host in front: the static host for a path
 *                      under "/3.7.3/dumps/", else the main host; "https://" when the
 *                      host is set so
 * @param reply         receives the reply as a new text, whatever the result; the server's notice
 *                      for code 29; an empty text with a temporary file; null for codes 6, 8, 9 and
 *                      24. May be null
 * @param authenticate  non-zero to send the user's credentials, never to the static host; without a
 *                      configured password the request goes out without them
 * @param tempFileName  null to collect the reply in memory; else receives the path of a new file in
 *                      the system's temporary directory with the reply. The caller removes the file
 *                      and frees the path
 * @param requireData   non-zero to take an empty reply for code 13
 * @return 0; 6, 8 or 9 when the credentials cannot be made; 24 without a transfer handle; 1 when
 *         the temporary file cannot be made (the reply is then untouched) or the transfer into it
 *         failed; otherwise as zox_http_curl_done()
 */
ZoxErrorCode zox_http_curl_execute(const char *path, GSList *parameters, gint32 useHost,
                                   ZoxString **reply, gint32 authenticate, char **tempFileName,
                                   gint32 requireData);

/**
 * Makes the credentials for a URL. The authentication plug-in "libzox_http_plugin.so.2.0" in the
 * library directory is opened and closed for every call. Asserts "core->config". Threads: any.
 * @param url           the complete URL of the request
 * @param userPassword  receives a new text, user name and secret joined by a colon, on success only
 * @return 0; 2 when no password is configured (the request then goes out without credentials); 6
 *         when the platform cannot load modules; 8 when the plug-in cannot be opened; 9 when it
 *         lacks zox_plugin_auth or returns null
 */
ZoxErrorCode zox_http_curl_add_auth(const char *url, char **userPassword);

/**
 * Turns the end of a transfer into a result. A body is judged by how it begins, in this order:
 * "UNAUTH" gives 2, "BAN" 3, "Could not connect to the database" 4, "UPD" 27, "MSG" 29. Threads:
 * any.
 * @param transferResult  libcurl's result: 5 gives 15, 6 gives 14, 7 gives 16, 23 and 55 give 18,
 *                        26 and 56 give 17, 28 gives 19, any other but 0 gives 1
 * @param body            the reply
 * @param serverText      receives for code 29 a new text, everything behind "MSG"; else untouched
 * @param requireData     non-zero to take an empty body for code 13
 * @return the result; 0 when the body is for the caller to read
 */
ZoxErrorCode zox_http_curl_done(gint32 transferResult, const ZoxString *body, char **serverText,
                                gint32 requireData);

/**
 * Tells which status word a reply begins with; letter case counts. An addition to the interface.
 * Threads: any.
 * @param body  the reply
 * @return the word, or ZOX_STATUS_WORD_NONE when the reply is data
 */
ZoxStatusWord zox_http_status_word(const char *body);

/**
 * Installs the mail hook; the time of its last run starts at 0, so that the first request calls it.
 * Does not need the core. Threads: any.
 * @param function  the hook, called on whichever thread made a request; null for none
 * @param data      handed to the hook
 */
void zox_http_curl_set_zox_mail_callback(ZoxMailCallback function, gpointer data);

/**
 * libcurl's write callback into a text. The chunk is appended as text: a zero byte cuts it short.
 * Asserts "data". Threads: any, own data.
 * @param chunk  the bytes received
 * @param size   bytes per element
 * @param count  number of elements
 * @param data   the ZoxString to append to
 * @return size * count; 0, which stops the transfer, when the text would exceed 256 MiB
 */
size_t zox_curl_write_function(void *chunk, size_t size, size_t count, void *data);

/**
 * libcurl's write callback into a file. A short write is reported on standard output and the
 * transfer goes on. Asserts "fp". Threads: any, own data.
 * @param chunk  the bytes received
 * @param size   bytes per element
 * @param count  number of elements
 * @param fp     an `int *`: the open file's descriptor
 * @return size * count
 */
size_t zox_curl_file_write_function(void *chunk, size_t size, size_t count, void *fp);

/**
 * Addition to the interface: chooses the servers. They take precedence over the environment
 * variables VELKOR_MAIN_HOST and VELKOR_STATIC_HOST, and these over the hosts that the library was
 * built with. Each of them may have "https://" in front: its requests then go out over HTTPS only,
 * and fail with code 1 when the server's certificate is not signed by a trusted authority, not
 * valid at this time or not for this host; zox_http_last_failure() tells which. Does not need the
 * core. Threads: any; a request uses the hosts known when it starts.
 * @param mainHost    host name, with ":port" if needed, copied; null to return to the default
 * @param staticHost  the same for the host of the dumps
 */
void zox_http_set_hosts(const char *mainHost, const char *staticHost);

/**
 * Addition to the interface: chooses the certificate authorities to trust over HTTPS, instead of
 * those of the system. The file takes precedence over the environment variable VELKOR_CA_FILE.
 * With a file that cannot be read every request over HTTPS fails with code 1. Does not need the
 * core. Threads: any; a request uses the file known when it starts.
 * @param file  the path of a PEM file with their certificates, copied; null to return to the
 * default
 */
void zox_http_set_ca_file(const char *file);

/**
 * Addition to the interface: follows a running transfer and can stop it.
 * @param received  bytes received so far
 * @param total     bytes to expect; 0 while unknown
 * @param userData  the data given to zox_http_set_transfer_callback()
 * @return 0 to go on; non-zero to stop the transfer, whose request then gives 1
 */
typedef gint (*ZoxTransferCallback)(gint64 received, gint64 total, gpointer userData);

/**
 * Addition to the interface: installs a function that every transfer calls about once a second and
 * while data comes in, on the thread of its request. Does not need the core. Threads: any; a
 * transfer uses the function installed when it starts.
 * @param function  the function; null for none
 * @param userData  handed to the function
 */
void zox_http_set_transfer_callback(ZoxTransferCallback function, gpointer userData);

/**
 * Addition to the interface: what is known of a request that failed, beside its code. Host, path
 * and text hold no secret: no user, password or query of an address.
 */
typedef struct _ZoxHttpFailure {
  ZoxErrorCode code;     /**< the request's result; it may be 0, see zox_http_last_failure() */
  gint32 transferResult; /**< libcurl's number (CURLcode); 0 unless the transfer itself failed */
  gint32 httpStatus;     /**< the HTTP status of the reply; 0 without one */
  gint32 proxyFailed;    /**< 1 when it was the proxy that failed, else 0 */
  gint64 received;       /**< bytes of the body that came in, before decompression */
  const char *host;      /**< the host asked, with its port if it was given; may be empty */
  const char *path;      /**< the path on that host, without the query; may be empty */
  const char *text;      /**< why, for a log: the words of libcurl, of the dynamic linker with the
                              plug-in's path, of the system with the file's, or the library's own;
                              in English or the language of the locale */
} ZoxHttpFailure;

/**
 * Addition to the interface: tells why this thread's latest request failed. A request also counts
 * as failed with code 0 when its HTTP status is 400 or above, since a body is judged whatever the
 * status, and when its temporary file did not take all of the reply. Every request, by whatever
 * function, forgets the one before. Requests of the mail hook leave the record of the request that
 * ran it alone; in the callback of an asynchronous fetch the record is that fetch's. Does not need
 * the core. Threads: any.
 * @return what is known, which stays the library's and holds until this thread's next request or
 *         callback of an asynchronous fetch; null when the latest request did not fail or there was
 *         none
 */
const ZoxHttpFailure *zox_http_last_failure(void);

/**
 * The entry point `zox_plugin_auth` of the authentication plug-in, which exports it; the library
 * does not. It is called on whichever thread makes a request, by one thread at a time.
 * @param url       the complete URL of the request
 * @param password  the configured password
 * @return a text from `g_malloc()`, the password part of the basic authentication; the library
 *         releases it
 */
typedef char *(*ZoxPluginAuth)(const char *url, const ZoxString *password);

G_END_DECLS

#endif
