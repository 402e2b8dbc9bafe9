/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A module of the authentication plug-in's name that is something else. */
#include <gmodule.h>

extern "C" G_MODULE_EXPORT int something_else();

int something_else() {
  return 0;
}
