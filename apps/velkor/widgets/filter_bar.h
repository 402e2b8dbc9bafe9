/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A line of conditions that narrow the list: period, state, newsgroup, tag and poster. */
#ifndef VELKOR_APP_WIDGETS_FILTER_BAR_H
#define VELKOR_APP_WIDGETS_FILTER_BAR_H

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include <gtkmm.h>

#include "model/spot_query.h"

namespace velkor::app {

class FilterBar : public Gtk::Box {
public:
  /** @param watched  the watchlist, which outlives the bar */
  explicit FilterBar(const std::unordered_set<std::int32_t> &watched);

  /** Offers these states of postings, by their words. */
  void set_states(const std::map<std::int32_t, std::string> &states);
  /** Has the query narrowed by what is chosen here, and by nothing else of that kind. */
  void apply_to(SpotQuery &query) const;
  /** Nothing is narrowed any more. */
  void clear();
  void focus_first() { period_.grab_focus(); }

  sigc::signal<void()> &signal_changed() { return changed_; }

private:
  void build();
  void add_entry(Gtk::Entry &entry, const Glib::ustring &name);
  void tell();

  const std::unordered_set<std::int32_t> &watched_;
  Gtk::DropDown period_;
  Gtk::DropDown state_;
  Gtk::Entry poster_;
  Gtk::Entry tag_;
  Gtk::Entry newsgroup_;
  Gtk::Button clear_button_;
  std::vector<std::int32_t> states_;  // of the choices behind the fixed ones
  std::int64_t since_ = 0;
  bool quiet_ = false;  // while the bar itself changes what is chosen
  sigc::signal<void()> changed_;
};

}  // namespace velkor::app

#endif
