/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What forms, lists and pages share for input. */
#ifndef VELKOR_APP_WIDGETS_INPUT_H
#define VELKOR_APP_WIDGETS_INPUT_H

#include <functional>

#include <gtkmm.h>

namespace velkor::app {

/** Lets keys, as GTK writes them, start an action while the focus is in the widget. */
void add_key(Gtk::Widget &widget, const char *keys, std::function<void()> action);

/** The label before a field, whose mnemonic goes there. */
Gtk::Label *field_label(const Glib::ustring &text, Gtk::Widget &field);

/** Makes of these a field for several lines. */
void prepare_text_field(Gtk::ScrolledWindow &scroller, Gtk::TextView &text,
                        const Glib::ustring &name);

}  // namespace velkor::app

#endif
