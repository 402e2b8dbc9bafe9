/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Names for screen readers, for widgets whose text does not tell what they are. */
#ifndef VELKOR_APP_WIDGETS_ACCESSIBLE_NAME_H
#define VELKOR_APP_WIDGETS_ACCESSIBLE_NAME_H

#include <gtkmm.h>

namespace velkor::app {

inline void set_accessible_name(Gtk::Widget &widget, const Glib::ustring &name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 name.c_str(), -1);
}

}  // namespace velkor::app

#endif
