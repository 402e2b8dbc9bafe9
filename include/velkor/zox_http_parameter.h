/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_HTTP_PARAMETER_H
#define VELKOR_ZOX_HTTP_PARAMETER_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxHttpParameter {
  ZoxString *paramName;
  ZoxString *paramValue;
} ZoxHttpParameter;

ZoxHttpParameter *zox_http_parameter_new(const char *name, const char *value);
void              zox_http_parameter_free(ZoxHttpParameter *parameter);
void              zox_http_parameter_free_all(GSList *list);

G_END_DECLS

#endif
