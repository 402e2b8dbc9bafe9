/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/page.h"

#include "widgets/accessible_name.h"
#include "widgets/input.h"
#include "widgets/translation.h"

namespace velkor::app {

Page::Page(const Glib::ustring &title) : Gtk::Box(Gtk::Orientation::VERTICAL), title_(title) {
  back_.set_icon_name("go-previous-symbolic");
  back_.set_tooltip_text(_("Back to the spots (Escape)"));
  back_.set_action_name("win.back");
  set_accessible_name(back_, _("Back to the spots"));
  back_.add_css_class("flat");
  title_.add_css_class("title-3");
  title_.set_xalign(0);
  title_.set_hexpand(true);
  line_.append(back_);
  line_.append(title_);
  line_.add_css_class("page-title");
  append(line_);
  add_key(*this, "Escape", [this] { activate_action("win.back"); });
}

void Page::add_to_title_line(Gtk::Widget &widget) {
  line_.append(widget);
}

Gtk::Label *hint_label(const Glib::ustring &text) {
  auto *label = Gtk::make_managed<Gtk::Label>(text);
  label->set_wrap(true);
  label->set_max_width_chars(60);
  label->set_justify(Gtk::Justification::CENTER);
  label->set_valign(Gtk::Align::CENTER);
  label->set_vexpand(true);
  label->add_css_class("hint");
  return label;
}

void name_by_label_alone(Gtk::Widget &button) {
  gtk_accessible_reset_property(GTK_ACCESSIBLE(button.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL);
}

}  // namespace velkor::app
