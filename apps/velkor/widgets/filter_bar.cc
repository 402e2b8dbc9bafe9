/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/filter_bar.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "widgets/accessible_name.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

constexpr std::int64_t seconds_of_day = 86400;

struct Period {
  const char *name;
  int days;  // 0 for any time
};

constexpr std::array<Period, 4> periods{{{N_("Any time"), 0},
                                         {N_("Last 24 hours"), 1},
                                         {N_("Last 7 days"), 7},
                                         {N_("Last 30 days"), 30}}};

/** The choices of states that do not depend on the service. */
enum FixedState : guint { any_state, new_spots, watched_spots, found_spots, fixed_states };

std::vector<Glib::ustring> period_names() {
  std::vector<Glib::ustring> names;
  names.reserve(periods.size());
  for (const Period &period : periods)
    names.emplace_back(_(period.name));
  return names;
}

std::vector<Glib::ustring> fixed_state_names() {
  return {_("Any state"), _("New"), _("On the watchlist"), _("Found by a watcher")};
}

}  // namespace

FilterBar::FilterBar(const std::unordered_set<std::int32_t> &watched)
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, 6), watched_(watched), period_(period_names()),
      state_(fixed_state_names()), clear_button_(_("C_lear"), true) {
  build();
  period_.property_selected().signal_changed().connect([this] {
    const int days = periods.at(period_.get_selected()).days;
    since_ = days == 0 ? 0 : g_get_real_time() / G_USEC_PER_SEC - days * seconds_of_day;
    tell();
  });
  state_.property_selected().signal_changed().connect([this] { tell(); });
  clear_button_.signal_clicked().connect([this] { clear(); });
}

void FilterBar::build() {
  add_css_class("filter-bar");
  set_accessible_name(period_, _("Period"));
  set_accessible_name(state_, _("State"));
  append(period_);
  append(state_);
  add_entry(poster_, _("Poster"));
  add_entry(tag_, _("Tag"));
  add_entry(newsgroup_, _("Newsgroup"));
  clear_button_.set_tooltip_text(_("Show everything again"));
  append(clear_button_);
}

void FilterBar::add_entry(Gtk::Entry &entry, const Glib::ustring &name) {
  entry.set_placeholder_text(name);
  set_accessible_name(entry, name);
  entry.set_width_chars(8);
  entry.set_hexpand(true);
  entry.signal_changed().connect([this] { tell(); });
  append(entry);
}

void FilterBar::set_states(const std::map<std::int32_t, std::string> &states) {
  std::vector<std::int32_t> numbers;
  std::vector<Glib::ustring> names = fixed_state_names();
  for (const auto &[number, name] : states) {
    numbers.push_back(number);
    names.emplace_back(name);
  }
  if (numbers == states_)
    return;
  const guint chosen = state_.get_selected();
  const auto earlier = chosen >= fixed_states && chosen - fixed_states < states_.size()
                           ? std::optional(states_[chosen - fixed_states])
                           : std::nullopt;
  states_ = std::move(numbers);
  const auto place = earlier ? std::ranges::find(states_, *earlier) : states_.end();
  quiet_ = true;
  state_.set_model(Gtk::StringList::create(names));
  if (place != states_.end())
    state_.set_selected(fixed_states + static_cast<guint>(place - states_.begin()));
  else
    state_.set_selected(chosen < fixed_states ? chosen : any_state);
  quiet_ = false;
}

void FilterBar::apply_to(SpotQuery &query) const {
  const guint state = state_.get_selected();
  query.marks = state == new_spots ? mark_new : state == found_spots ? mark_hit : 0;
  query.conditions = {.since = since_,
                      .poster = poster_.get_text().raw(),
                      .tag = tag_.get_text().raw(),
                      .newsgroup = newsgroup_.get_text().raw()};
  if (state == watched_spots)
    query.conditions.ids.emplace(watched_.begin(), watched_.end());
  if (state >= fixed_states && state - fixed_states < states_.size())
    query.conditions.status = states_[state - fixed_states];
}

void FilterBar::clear() {
  quiet_ = true;
  period_.set_selected(0);
  state_.set_selected(any_state);
  for (Gtk::Entry *entry : {&poster_, &tag_, &newsgroup_})
    entry->set_text("");
  quiet_ = false;
  tell();
}

void FilterBar::tell() {
  if (!quiet_)
    changed_.emit();
}

}  // namespace velkor::app
