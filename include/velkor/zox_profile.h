/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The public profile of a user.
 */
#ifndef VELKOR_ZOX_PROFILE_H
#define VELKOR_ZOX_PROFILE_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * A profile as the server states it; it owns its texts, which are null (numbers: 0) when the reply
 * does not hold them.
 */
typedef struct _ZoxProfile {
  char *name;            /**< user name; never null in a profile received */
  gint64 stamp;          /**< the server's "Stamp", seconds since 1970 */
  guint32 posts;         /**< the server's "Posts" */
  guint32 spots;         /**< the server's "Spots" */
  guint32 kudos;         /**< the server's "Kudos" */
  guint32 kudosGiven;    /**< kudos given */
  guint32 kudosReceived; /**< kudos received */
  guint32 rank;          /**< the server's "Rank" */
  char *email;           /**< e-mail address */
  char *info;            /**< about the user */
  char *avatar;          /**< avatar */
  guint32 status;        /**< the server's "Status" */
  char *site;            /**< web site */
  char *im;              /**< instant messaging */
  char *isp;             /**< provider */
  char *newsServer;      /**< news server */
  char *hobby;           /**< hobby */
  guint32 profileStatus; /**< the server's "PStat" */
} ZoxProfile;

/**
 * Asks for a profile; blocks. A profile with an empty name is none; any other text element without
 * text asserts "tmp" (in tolerant mode the profile is passed over with a warning). Asserts
 * "username", "profile", "errmsg" and "uitvoer". Threads: any.
 * @param username  name of the user
 * @param profile   receives a new profile, which the caller releases with zox_profile_free(), or
 *                  null; untouched when the request failed
 * @param errmsg    receives the server's notice for 29, else null
 * @return 0; 33 when the reply holds no profile; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_profile_get(const char *username, ZoxProfile **profile, char **errmsg);

/**
 * Releases a profile. Does not need the core. Threads: any, own data.
 * @param profile  the profile
 */
void zox_profile_free(ZoxProfile *profile);

G_END_DECLS

#endif
