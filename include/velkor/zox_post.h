/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_POST_H
#define VELKOR_ZOX_POST_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef gint (*ZoxPostProgress)(gint32 step);

ZoxErrorCode zox_post_send(ZoxEvent *event, ZoxPostProgress progress);

G_END_DECLS

#endif
