/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The page of one posting: its texts and facts, and its reactions on a second tab. */
#ifndef VELKOR_APP_WINDOW_POSTING_PAGE_H
#define VELKOR_APP_WINDOW_POSTING_PAGE_H

#include <string>

#include <gtkmm.h>

#include "library/session.h"
#include "model/posting_details.h"
#include "model/snapshot.h"
#include "window/reactions_page.h"
#include "window/warning_form.h"

namespace velkor::app {

class PostingPage : public Gtk::Box {
public:
  PostingPage();

  /** From now on the page is that of posting `id`, of which nothing is known yet. */
  void begin(std::int32_t id);
  void show_reply(const PostingReply &reply, const Vocabulary &words);
  void set_watched(bool watched);
  void show_reactions();
  /** Why the list does not show the posting; empty when it does. */
  void show_hidden(const Glib::ustring &reason);

  [[nodiscard]] std::int32_t id() const noexcept { return details_.id; }
  [[nodiscard]] const PostingDetails &details() const noexcept { return details_; }
  WarningForm &warning() { return warning_; }
  /** Why the server did not take what it was given; empty for nothing to tell. */
  void show_refusal(const Glib::ustring &refusal);
  /** Shows the form for a warning. */
  void begin_warning();
  ReactionsPage &reactions() { return reactions_; }

private:
  void build_header();
  void show_details(const Vocabulary &words);
  void add_fact(const Glib::ustring &name, const Glib::ustring &value);
  void add_text(const Glib::ustring &name, const std::string &text);
  void add_tracks();
  [[nodiscard]] Glib::ustring newsgroup_names(const Vocabulary &words) const;

  PostingDetails details_;
  Gtk::Box header_{Gtk::Orientation::HORIZONTAL, 6};
  Gtk::Label title_;
  Gtk::StackSwitcher switcher_;
  Gtk::Stack stack_;
  Gtk::ToggleButton watch_;
  Gtk::Button kudos_;
  Gtk::Button warn_;
  Gtk::Button profile_;
  Gtk::Button link_;
  Gtk::Button image_;
  Gtk::Button close_;
  Gtk::Spinner spinner_;
  Gtk::Box hidden_{Gtk::Orientation::HORIZONTAL, 12};
  Gtk::Label hidden_text_;
  Gtk::Button hidden_button_;
  Gtk::Label refusal_;
  WarningForm warning_;
  Gtk::Label failure_;
  Gtk::ScrolledWindow scroller_;
  Gtk::Box body_{Gtk::Orientation::VERTICAL, 12};
  Gtk::Box columns_{Gtk::Orientation::HORIZONTAL, 30};
  Gtk::Grid facts_;
  int fact_count_ = 0;
  Gtk::Box texts_{Gtk::Orientation::VERTICAL, 12};
  ReactionsPage reactions_;
};

}  // namespace velkor::app

#endif
