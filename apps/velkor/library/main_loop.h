/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The way from other threads to the main loop. */
#ifndef VELKOR_APP_LIBRARY_MAIN_LOOP_H
#define VELKOR_APP_LIBRARY_MAIN_LOOP_H

#include <functional>

namespace velkor::app {

/** Lets the default main loop call `action` soon, in the order of the calls. Threads: any. */
void run_on_main_loop(std::function<void()> action);

}  // namespace velkor::app

#endif
