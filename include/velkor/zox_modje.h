/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_MODJE_H
#define VELKOR_ZOX_MODJE_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

ZoxErrorCode zox_modje_send(gint32 postId, gint32 forumId, const char *reason,
                            gint32 *number, char **message);

G_END_DECLS

#endif
