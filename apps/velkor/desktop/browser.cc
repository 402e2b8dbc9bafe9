/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "desktop/browser.h"

#include "support/owned.h"
#include "support/text.h"

namespace velkor::app {
namespace {

bool is_of_the_web(const std::string &address) {
  const OwnedText scheme(g_uri_parse_scheme(address.c_str()));
  return scheme &&
         (equal_ignoring_case(scheme.get(), "http") || equal_ignoring_case(scheme.get(), "https"));
}

}  // namespace

void open_in_browser(Gtk::Window &window, const std::string &address) {
  if (is_of_the_web(address))
    gtk_show_uri(window.gobj(), address.c_str(), GDK_CURRENT_TIME);
}

}  // namespace velkor::app
