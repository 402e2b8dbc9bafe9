/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The parameters of a request: an ordered `GSList *` of ZoxHttpParameter.
 *
 * None of these functions needs the core. Threads: any, own data.
 */
#ifndef VELKOR_ZOX_HTTP_PARAMETER_H
#define VELKOR_ZOX_HTTP_PARAMETER_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** One parameter; it owns both texts, neither of which is null. */
typedef struct _ZoxHttpParameter {
  ZoxString *paramName;  /**< sent as it is */
  ZoxString *paramValue; /**< sent URL-escaped */
} ZoxHttpParameter;

/**
 * Asserts "name" and "value".
 * @param name   the name, copied
 * @param value  the value, copied
 * @return a new parameter
 */
ZoxHttpParameter *zox_http_parameter_new(const char *name, const char *value);

/**
 * Releases a parameter. Asserts "parameter", "parameter->paramName" and "parameter->paramValue".
 * @param parameter  the parameter
 */
void zox_http_parameter_free(ZoxHttpParameter *parameter);

/**
 * Releases a list with its parameters. Asserts "param" (no item is null).
 * @param list  the list, or null
 */
void zox_http_parameter_free_all(GSList *list);

G_END_DECLS

#endif
