/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_SIGNUP_H
#define VELKOR_ZOX_SIGNUP_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

ZoxErrorCode zox_signup_register(const char *username, const char *password,
                                 const char *email, char **message);

G_END_DECLS

#endif
