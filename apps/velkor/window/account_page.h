/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The first start: name and password of the account, without which the server tells nothing, and
 * how the server is reached.
 */
#ifndef VELKOR_APP_WINDOW_ACCOUNT_PAGE_H
#define VELKOR_APP_WINDOW_ACCOUNT_PAGE_H

#include <filesystem>
#include <vector>

#include <gtkmm.h>

#include "library/session.h"
#include "model/setting.h"
#include "widgets/setting_row.h"

namespace velkor::app {

class AccountPage : public Gtk::Box {
public:
  /** @param servers_file  where the choice of servers is kept */
  AccountPage(Session &session, std::filesystem::path servers_file);
  ~AccountPage() override;
  AccountPage(const AccountPage &) = delete;
  AccountPage &operator=(const AccountPage &) = delete;

  /** The page comes into view. */
  void begin();

  /** The account has been saved. */
  sigc::signal<void()> &signal_done() { return done_; }

private:
  void build();
  void build_connection();
  void add_rows(const Settings &settings);
  void enable();
  void accept();
  void show_refusals(const SettingRefusals &refusals);

  Session &session_;
  std::filesystem::path servers_file_;
  Settings settings_;
  SharedCancellation request_;
  Gtk::Box column_{Gtk::Orientation::VERTICAL, 18};
  Gtk::Label title_;
  Gtk::Label text_;
  Gtk::Grid form_;
  Gtk::Entry name_;
  Gtk::PasswordEntry password_;
  Gtk::Expander connection_;
  Gtk::Box connection_form_{Gtk::Orientation::VERTICAL, 12};
  std::vector<SettingRow *> rows_;  // widgets of the form
  Gtk::Button button_;
  Gtk::Label failure_;
  sigc::signal<void()> done_;
};

}  // namespace velkor::app

#endif
