/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A private message that is being written. */
#ifndef VELKOR_APP_WIDGETS_MESSAGE_EDITOR_H
#define VELKOR_APP_WIDGETS_MESSAGE_EDITOR_H

#include <gtkmm.h>

#include "model/message.h"

namespace velkor::app {

class MessageEditor : public Gtk::Box {
public:
  MessageEditor();

  void begin(const Draft &draft);
  /** How sending ended: with an empty text it was sent, else the message stays to try again. */
  void show_sent(const Glib::ustring &failure);
  /** Whether something has been written that would be lost. */
  [[nodiscard]] bool has_text() const;

  sigc::signal<void(Draft)> &signal_send() { return send_; }
  sigc::signal<void()> &signal_discard() { return discard_; }

private:
  void build_fields();
  void build_buttons();
  void send();
  void show_failure(const Glib::ustring &failure);

  bool sending_ = false;
  Gtk::Grid fields_;
  Gtk::Entry to_;
  Gtk::Entry subject_;
  Gtk::ScrolledWindow scroller_;
  Gtk::TextView body_;
  Gtk::Label failure_;
  Gtk::Box buttons_{Gtk::Orientation::HORIZONTAL, 6};
  Gtk::Button send_button_;
  Gtk::Button discard_button_;
  sigc::signal<void(Draft)> send_;
  sigc::signal<void()> discard_;
};

}  // namespace velkor::app

#endif
