/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The way from one thread to another. */
#ifndef VELKOR_APP_LIBRARY_MAIN_LOOP_H
#define VELKOR_APP_LIBRARY_MAIN_LOOP_H

#include <functional>

#include <glib.h>

namespace velkor::app {

/** Lets the thread that runs `context` call `action` soon, in the order of the calls. Threads: any.
 */
void run_on_context(GMainContext *context, std::function<void()> action);

/** The same for the default main loop. Threads: any. */
void run_on_main_loop(std::function<void()> action);

}  // namespace velkor::app

#endif
