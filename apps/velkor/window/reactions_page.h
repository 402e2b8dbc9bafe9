/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reactions to a posting, with answers under what they answer, and the field for a new one. */
#ifndef VELKOR_APP_WINDOW_REACTIONS_PAGE_H
#define VELKOR_APP_WINDOW_REACTIONS_PAGE_H

#include <cstdint>
#include <string>
#include <vector>

#include <gtkmm.h>

#include "model/forum.h"

namespace velkor::app {

class ReactionsPage : public Gtk::Box {
public:
  ReactionsPage();

  /** From now on the page is that of posting `id`, of which nothing is known yet. */
  void begin(std::int32_t id);
  void show_reactions(const std::vector<Reaction> &reactions, bool closed);
  void show_failure(const Glib::ustring &message);
  void focus_editor();
  /** How sending a reaction ended: with an empty text it was sent, else it is kept to try again. */
  void show_sent(const Glib::ustring &failure);

  sigc::signal<void(std::int32_t id, std::string text)> &signal_send() { return send_; }

private:
  void build_list();
  void build_editor();
  void show_hint(const Glib::ustring &text);
  void send();

  std::int32_t id_ = 0;
  Glib::RefPtr<Gio::ListStoreBase> items_;  // of ReactionItem
  Gtk::Stack stack_;
  Gtk::ScrolledWindow scroller_;
  Gtk::ListView list_;
  Gtk::Label hint_;
  Gtk::Box editor_{Gtk::Orientation::HORIZONTAL, 6};
  Gtk::ScrolledWindow text_scroller_;
  Gtk::TextView text_;
  Gtk::Button send_button_;
  Gtk::Label failure_;
  sigc::signal<void(std::int32_t, std::string)> send_;
};

}  // namespace velkor::app

#endif
