/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_STRING_H
#define VELKOR_ZOX_STRING_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

ZoxString  *zox_string_new(const char *text);
const char *zox_string_value(const ZoxString *s);
ZoxString  *zox_string_integer(gint32 n);
const char *zox_string_category(gint32 n);
const char *zox_string_status(gint32 n);
char       *zox_string_strip_newsgroup(const ZoxString *s);
char       *zox_string_upcase(const char *text);
ZoxString  *zox_string_add_http(const ZoxString *s);
char       *zox_string_date(gint64 seconds);
ZoxString  *zox_string_replace(const ZoxString *source, const char *search,
                               const char *replacement);

G_END_DECLS

#endif
