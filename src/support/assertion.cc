/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/assertion.h"

#include <glib.h>

namespace velkor {

void assertion_failed(const char *file, int line, const char *function,
                      const char *expression) noexcept {
  g_assertion_message_expr(G_LOG_DOMAIN, file, line, function, expression);
}

}  // namespace velkor
