/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A page that takes the place of the spots until the user goes back: a title line and a body. */
#ifndef VELKOR_APP_WIDGETS_PAGE_H
#define VELKOR_APP_WIDGETS_PAGE_H

#include <gtkmm.h>

namespace velkor::app {

class Page : public Gtk::Box {
public:
  explicit Page(const Glib::ustring &title);

  /** The user comes to the page. */
  virtual void begin() = 0;

protected:
  /** Puts a widget at the end of the title line. */
  void add_to_title_line(Gtk::Widget &widget);

private:
  Gtk::Box line_{Gtk::Orientation::HORIZONTAL, 6};
  Gtk::Button back_;
  Gtk::Label title_;
};

/** A text in the middle of an empty page, which says what to do. */
Gtk::Label *hint_label(const Glib::ustring &text);

/** For a button with a label: its name and that of the label would be read one after the other. */
void name_by_label_alone(Gtk::Widget &button);

}  // namespace velkor::app

#endif
