/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The profile of a user, such as the poster of a spot. */
#ifndef VELKOR_APP_WINDOW_PROFILE_PAGE_H
#define VELKOR_APP_WINDOW_PROFILE_PAGE_H

#include <cstdint>
#include <string>

#include <gtkmm.h>

#include "library/profile_reader.h"
#include "library/session.h"
#include "widgets/page.h"

namespace velkor::app {

class ProfilePage : public Page {
public:
  explicit ProfilePage(Session &session);
  ~ProfilePage() override;
  ProfilePage(const ProfilePage &) = delete;
  ProfilePage &operator=(const ProfilePage &) = delete;

  void begin() override;
  /** From now on the page is that of this user. */
  void set_user(const std::string &name);

  /** The user wants to write a message to the one whose page this is. */
  sigc::signal<void(std::string name)> &signal_write() { return write_; }

private:
  void take(const ProfileReply &reply);
  void show_profile(const Profile &profile);
  void add_fact(const Glib::ustring &name, const Glib::ustring &value);
  void add_count(const Glib::ustring &name, std::uint32_t number);
  void show_hint(const Glib::ustring &text);

  Session &session_;
  std::string name_;
  SharedCancellation request_;
  Gtk::Button write_button_;
  Gtk::Stack stack_;
  Gtk::Label *hint_;
  Gtk::ScrolledWindow scroller_;
  Gtk::Box body_{Gtk::Orientation::VERTICAL, 12};
  Gtk::Label title_;
  Gtk::Grid facts_;
  int fact_count_ = 0;
  Gtk::Label info_;
  sigc::signal<void(std::string)> write_;
};

}  // namespace velkor::app

#endif
