/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What an update is doing, and how it ended. */
#ifndef VELKOR_APP_WIDGETS_UPDATE_BAR_H
#define VELKOR_APP_WIDGETS_UPDATE_BAR_H

#include <vector>

#include <gtkmm.h>

#include "model/update_state.h"

namespace velkor::app {

class UpdateBar : public Gtk::Revealer {
public:
  UpdateBar();

  /** From now on an update runs. */
  void begin();
  void show_progress(const UpdateProgress &progress);
  void show_outcome(const UpdateOutcome &outcome);

  sigc::signal<void()> &signal_stop() { return stop_; }

private:
  void show_text(const Glib::ustring &text);
  void show_watchers(const std::vector<Glib::ustring> &lines);

  Gtk::Box line_{Gtk::Orientation::HORIZONTAL, 12};
  Gtk::Box texts_{Gtk::Orientation::VERTICAL};
  Gtk::Label text_;
  Gtk::Box watchers_{Gtk::Orientation::VERTICAL};  // a label for each
  Gtk::ProgressBar bar_;
  Gtk::Button stop_button_;
  Gtk::Button close_button_;
  sigc::signal<void()> stop_;
};

/** The sentences that tell how an update ended, but for what the watchers matched. */
Glib::ustring words_for(const UpdateOutcome &outcome);

}  // namespace velkor::app

#endif
