/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_TYPES_H
#define VELKOR_ZOX_TYPES_H

#include <glib.h>

G_BEGIN_DECLS

typedef guint32 ZoxErrorCode;
typedef GString ZoxString;
typedef ZoxString *(*ZoxTextFunc)(ZoxString *text);
typedef struct _ZOXFilterlist ZOXFilterlist;
typedef struct _ZOXEventlist  ZOXEventlist;
typedef struct _ZoxForum ZoxForum;
typedef struct _ZoxFilter ZoxFilter;

G_END_DECLS

#endif
