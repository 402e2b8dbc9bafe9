/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The line in which the user tells the moderators what is wrong with a spot. */
#ifndef VELKOR_APP_WINDOW_WARNING_FORM_H
#define VELKOR_APP_WINDOW_WARNING_FORM_H

#include <string>

#include <gtkmm.h>

namespace velkor::app {

class WarningForm : public Gtk::Box {
public:
  WarningForm();

  /** Shows the empty line, ready to be typed into. */
  void begin();
  /** With an empty text the warning was sent, else the line stays to try again. */
  void show_sent(const Glib::ustring &refusal);

  sigc::signal<void(std::string reason)> &signal_send() { return send_; }

private:
  void send();

  Gtk::Box line_{Gtk::Orientation::HORIZONTAL, 6};
  Gtk::Entry reason_;
  Gtk::Button send_button_;
  Gtk::Button cancel_button_;
  Gtk::Label refusal_;
  bool sending_ = false;
  sigc::signal<void(std::string)> send_;
};

}  // namespace velkor::app

#endif
