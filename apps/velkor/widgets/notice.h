/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A line at the bottom that tells what was done and lets the user undo it. */
#ifndef VELKOR_APP_WIDGETS_NOTICE_H
#define VELKOR_APP_WIDGETS_NOTICE_H

#include <functional>

#include <gtkmm.h>

namespace velkor::app {

class Notice : public Gtk::Revealer {
public:
  Notice();
  ~Notice() override;
  Notice(const Notice &) = delete;
  Notice &operator=(const Notice &) = delete;

  /** Shows the text for a while, in place of an earlier one. */
  void show_text(const Glib::ustring &text, std::function<void()> undo = {});
  /** Undoes what the notice tells about, if that can be undone. */
  void undo();

private:
  void hide();

  Gtk::Box line_{Gtk::Orientation::HORIZONTAL, 12};
  Gtk::Label text_;
  Gtk::Button undo_button_;
  std::function<void()> undo_;
  sigc::connection end_;
};

}  // namespace velkor::app

#endif
