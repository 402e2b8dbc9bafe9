/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A line of a page that tells how what the user asked for goes; hidden until there is a text. */
#ifndef VELKOR_APP_WIDGETS_STATUS_LINE_H
#define VELKOR_APP_WIDGETS_STATUS_LINE_H

#include <gtkmm.h>

namespace velkor::app {

class StatusLine : public Gtk::Label {
public:
  StatusLine();

  void tell(const Glib::ustring &text);
  void tell_failure(const Glib::ustring &text);
};

}  // namespace velkor::app

#endif
