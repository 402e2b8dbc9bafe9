/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Signing up for an account. Requests block. Threads: any.
 */
#ifndef VELKOR_ZOX_SIGNUP_H
#define VELKOR_ZOX_SIGNUP_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Asks the server for an account; the request goes out without credentials and the settings stay as
 * they are. The reply is judged by its first two characters, whatever became of the request: a
 * failed request counts as an empty reply, and a server's notice is judged like any other text.
 * @param username  name of the new user
 * @param password  password
 * @param email     e-mail address
 * @param message   receives null, or for 11 the text "Onjuiste response van server :\n" with the
 *                  whole reply; after a notice that begins like an answer, that notice
 * @return 0 for "OK"; 20 to 23 for "E0" to "E3"; 11 for anything else
 */
ZoxErrorCode zox_signup_register(const char *username, const char *password, const char *email,
                                 char **message);

G_END_DECLS

#endif
