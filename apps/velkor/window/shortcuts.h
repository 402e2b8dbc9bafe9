/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The keys of the window: one table serves the keys themselves and the window that lists them. */
#ifndef VELKOR_APP_WINDOW_SHORTCUTS_H
#define VELKOR_APP_WINDOW_SHORTCUTS_H

#include <gtkmm.h>

namespace velkor::app {

/** Lets the keys start the actions. */
void set_accelerators(Gtk::Application &application);

/** Makes the list of keys part of the window, whose action "show-help-overlay" shows it. */
void add_shortcuts_window(Gtk::ApplicationWindow &window);

}  // namespace velkor::app

#endif
