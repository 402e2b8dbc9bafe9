/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "desktop/style.h"

#include <adwaita.h>
#include <gtkmm.h>

namespace velkor::app {

void apply_style() {
  adw_init();
  adw_style_manager_set_color_scheme(adw_style_manager_get_default(), ADW_COLOR_SCHEME_DEFAULT);
  const auto css = Gtk::CssProvider::create();
  css->load_from_resource("/org/Velkor/Velkor/style.css");
  Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), css,
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}  // namespace velkor::app
