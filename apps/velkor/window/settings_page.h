/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The settings: what each is for, what it would do, and why a value was refused. */
#ifndef VELKOR_APP_WINDOW_SETTINGS_PAGE_H
#define VELKOR_APP_WINDOW_SETTINGS_PAGE_H

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtkmm.h>

#include "library/job_thread.h"
#include "library/session.h"
#include "model/lost_spots.h"
#include "model/setting.h"
#include "model/setting_labels.h"
#include "widgets/notice.h"
#include "widgets/page.h"
#include "widgets/setting_row.h"

namespace velkor::app {

class SettingsPage : public Page {
public:
  /** @param servers_file  where the choice of servers is kept */
  SettingsPage(Session &session, Notice &notice, std::filesystem::path servers_file);
  ~SettingsPage() override;
  SettingsPage(const SettingsPage &) = delete;
  SettingsPage &operator=(const SettingsPage &) = delete;

  void begin() override;
  /** What the consequences of settings are counted in. */
  void set_snapshot(SharedSnapshot snapshot);

  /** Settings were saved; tells whether there is an account now. */
  sigc::signal<void(bool)> &signal_saved() { return saved_; }

private:
  void build();
  void read();
  void take(Settings settings);
  void add_rows();
  void add_heading(SettingGroup group);
  void add_row(const SettingLabel &label);
  [[nodiscard]] SettingChanges wanted() const;
  [[nodiscard]] SettingRow *row(std::string_view key);
  void save();
  void apply(const SettingChanges &changes, const std::function<void(bool all_taken)> &done);
  void take_over(const Settings &settings, const SettingChanges &changes,
                 const SettingRefusals &refusals);
  void show_refusals(const SettingRefusals &refusals);
  void changed();
  void show_consequences();
  void preview_bad_words();
  void show_lost(const LostSpots &lost);

  Session &session_;
  Notice &notice_;
  std::filesystem::path servers_file_;
  SharedSnapshot snapshot_;
  Settings settings_;
  SharedCancellation request_;
  SharedCancellation preview_;
  Gtk::Stack stack_;
  Gtk::Label *hint_;
  Gtk::ScrolledWindow scroller_;
  Gtk::Box form_{Gtk::Orientation::VERTICAL, 12};
  Gtk::Label failure_;
  Gtk::Button save_;
  std::vector<SettingRow *> rows_;  // widgets of the form
  bool filling_ = false;
  sigc::signal<void(bool)> saved_;
  JobThread previews_;
};

}  // namespace velkor::app

#endif
