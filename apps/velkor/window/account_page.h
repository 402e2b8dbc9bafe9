/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The first start: name and password of the account, without which the server tells nothing. */
#ifndef VELKOR_APP_WINDOW_ACCOUNT_PAGE_H
#define VELKOR_APP_WINDOW_ACCOUNT_PAGE_H

#include <string>

#include <gtkmm.h>

namespace velkor::app {

class AccountPage : public Gtk::Box {
public:
  AccountPage();

  void focus_name();
  /** The account could not be kept. */
  void show_failure(const Glib::ustring &failure);

  sigc::signal<void(std::string name, std::string password)> &signal_account() { return account_; }

private:
  void accept();

  Gtk::Label title_;
  Gtk::Label text_;
  Gtk::Grid form_;
  Gtk::Entry name_;
  Gtk::PasswordEntry password_;
  Gtk::Button button_;
  Gtk::Label failure_;
  sigc::signal<void(std::string, std::string)> account_;
};

}  // namespace velkor::app

#endif
