/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_KUDOS_H
#define VELKOR_ZOX_KUDOS_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

ZoxErrorCode zox_kudos_give(gint32 postId, gint32 kudos, char **message);
ZoxErrorCode zox_kudos_get(gint32 postId, gint32 *first, gint32 *second, char **message);

G_END_DECLS

#endif
