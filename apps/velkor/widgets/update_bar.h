/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What an update is doing, and how it ended. */
#ifndef VELKOR_APP_WIDGETS_UPDATE_BAR_H
#define VELKOR_APP_WIDGETS_UPDATE_BAR_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
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

  /** Asks whether an update may remove all spots because of the age limit, in days. */
  void show_question(std::size_t spots, std::int32_t age_limit);

  sigc::signal<void()> &signal_stop() { return stop_; }
  sigc::signal<void()> &signal_update_anyway() { return update_anyway_; }

private:
  /** Of the widgets beside the text, shows these alone. */
  void show_only(std::initializer_list<const Gtk::Widget *> shown);
  void show_text(const Glib::ustring &text);
  void show_watchers(const std::vector<Glib::ustring> &lines);

  Gtk::Box line_{Gtk::Orientation::HORIZONTAL, 12};
  Gtk::Box texts_{Gtk::Orientation::VERTICAL};
  Gtk::Label text_;
  Gtk::Box watchers_{Gtk::Orientation::VERTICAL};  // a label for each
  Gtk::ProgressBar bar_;
  Gtk::Button stop_button_;
  Gtk::Button update_button_;
  Gtk::Button settings_button_;
  Gtk::Button not_now_button_;
  Gtk::Button close_button_;
  sigc::signal<void()> stop_;
  sigc::signal<void()> update_anyway_;
};

/** The sentences that tell how an update ended, but for what the watchers matched. */
Glib::ustring words_for(const UpdateOutcome &outcome);

}  // namespace velkor::app

#endif
