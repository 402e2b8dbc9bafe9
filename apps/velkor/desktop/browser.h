/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Web addresses from postings, in the user's browser. */
#ifndef VELKOR_APP_DESKTOP_BROWSER_H
#define VELKOR_APP_DESKTOP_BROWSER_H

#include <string>

#include <gtkmm.h>

namespace velkor::app {

/** Opens the address, which comes from anybody: only one of the web, nothing else. */
void open_in_browser(Gtk::Window &window, const std::string &address);

}  // namespace velkor::app

#endif
