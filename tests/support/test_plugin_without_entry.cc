/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A module with the name of the authentication plug-in, but without its entry point. */
#include <gmodule.h>

extern "C" G_MODULE_EXPORT int something_else();

int something_else() {
  return 0;
}
