/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_PROFILE_H
#define VELKOR_ZOX_PROFILE_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxProfile {
  char   *name;
  gint64  stamp;
  guint32 posts;
  guint32 spots;
  guint32 kudos;
  guint32 kudosGiven;
  guint32 kudosReceived;
  guint32 rank;
  char   *email;
  char   *info;
  char   *avatar;
  guint32 status;
  char   *site;
  char   *im;
  char   *isp;
  char   *newsServer;
  char   *hobby;
  guint32 profileStatus;
} ZoxProfile;

ZoxErrorCode zox_profile_get(const char *username, ZoxProfile **profile, char **errmsg);
void         zox_profile_free(ZoxProfile *profile);

G_END_DECLS

#endif
