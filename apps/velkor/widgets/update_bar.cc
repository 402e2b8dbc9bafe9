/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/update_bar.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "support/owned.h"
#include "widgets/accessible_name.h"
#include "widgets/page.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

Glib::ustring size_text(std::int64_t bytes) {
  return OwnedText(g_format_size(static_cast<guint64>(bytes))).get();
}

Glib::ustring words_for_progress(const UpdateProgress &progress) {
  if (progress.saving)
    return _("Saving the spots…");
  if (progress.dump < 1)
    return _("Asking the server what is new…");
  Glib::ustring dump =
      Glib::ustring::compose(_("Download %1 of %2"), progress.dump, progress.dumps);
  if (progress.received == 0)
    return dump;
  if (progress.expected == 0)
    return dump + " — " + size_text(progress.received);
  return dump + " — " +
         Glib::ustring::compose(_("%1 of %2"), size_text(progress.received),
                                size_text(progress.expected));
}

/** The library's sentences come without their full stop. */
void add_sentence(Glib::ustring &words, const Glib::ustring &sentence) {
  const bool open = !words.empty() && Glib::Unicode::isalnum(words[words.size() - 1]);
  words += (open ? ". " : words.empty() ? "" : " ") + sentence;
}

Glib::ustring words_for_received(const UpdateOutcome &outcome) {
  Glib::ustring words = counted("%1 spot received.", "%1 spots received.", outcome.received());
  const std::array<std::pair<std::uint32_t, Glib::ustring>, 3> kinds{
      {{outcome.fresh, counted("%1 is new", "%1 are new", outcome.fresh)},
       {outcome.changed, counted("%1 has changed", "%1 have changed", outcome.changed)},
       {outcome.deleted, counted("%1 has been deleted", "%1 have been deleted", outcome.deleted)}}};
  const char *separator = " ";
  for (const auto &[count, text] : kinds)
    if (count > 0)
      words += std::exchange(separator, ", ") + text;
  return outcome.received() > 0 ? words + "." : words;
}

Glib::ustring words_for_aged_out(const UpdateOutcome &outcome) {
  if (outcome.age_limit == 0)
    return counted("%1 spot was too old and has been removed.",
                   "%1 spots were too old and have been removed.", outcome.aged_out);
  return Glib::ustring::compose(
      ngettext("%1 spot has been removed, as it was older than %2 (the age limit in the settings).",
               "%1 spots have been removed, as they were older than %2 (the age limit in the "
               "settings).",
               outcome.aged_out),
      number_text(outcome.aged_out), counted("%1 day", "%1 days", outcome.age_limit));
}

Glib::ustring words_for_watcher(const WatcherGroup &group) {
  Glib::ustring titles;
  for (const HitSpot &spot : group.spots)
    titles += (titles.empty() ? "" : "; ") + Glib::ustring(spot.title);
  if (group.count > group.spots.size())
    titles += "; " + counted("and %1 more", "and %1 more",
                             static_cast<std::int64_t>(group.count - group.spots.size()));
  // Translators: %2 is the text of a watcher, %3 the titles of the spots.
  return Glib::ustring::compose(ngettext("“%2” matches %1 spot: %3", "“%2” matches %1 spots: %3",
                                         static_cast<unsigned long>(group.count)),
                                number_text(static_cast<std::int64_t>(group.count)),
                                Glib::ustring(group.watcher), titles);
}

/** A line for each watcher; few enough that the bar stays small. */
std::vector<Glib::ustring> lines_for_watchers(const std::vector<WatcherGroup> &groups) {
  constexpr std::size_t most = 4;
  std::vector<Glib::ustring> lines;
  for (const WatcherGroup &group : std::span(groups).first(std::min(most, groups.size())))
    lines.push_back(words_for_watcher(group));
  if (groups.size() > most)
    lines.push_back(counted("%1 more watcher matches spots.", "%1 more watchers match spots.",
                            static_cast<std::int64_t>(groups.size() - most)));
  return lines;
}

Glib::ustring words_for_question(std::size_t spots, std::int32_t age_limit) {
  const char *form = ngettext(
      "The update would remove the %1 spot that is not on the watchlist: it is older than %2, "
      "the age limit in the settings. Is the clock of this computer right?",
      "The update would remove all %1 spots that are not on the watchlist: they are older than "
      "%2, the age limit in the settings. Is the clock of this computer right?",
      spots);
  return Glib::ustring::compose(form, number_text(static_cast<std::int64_t>(spots)),
                                counted("%1 day", "%1 days", age_limit));
}

/** Its text may fill several lines. */
void prepare(Gtk::Label &label) {
  label.set_xalign(0);
  label.set_wrap(true);
  label.set_natural_wrap_mode(Gtk::NaturalWrapMode::NONE);
  label.set_selectable(true);
  label.set_focusable(false);
}

}  // namespace

Glib::ustring words_for(const UpdateOutcome &outcome) {
  Glib::ustring words;
  switch (outcome.kind) {
  case UpdateOutcome::Kind::changed:
    words = words_for_received(outcome);
    break;
  case UpdateOutcome::Kind::stopped:
    words = _("The update was stopped. The next one fetches the same spots.");
    break;
  case UpdateOutcome::Kind::nothing_new:
  case UpdateOutcome::Kind::failed:
    words = outcome.message;
  }
  if (outcome.kind == UpdateOutcome::Kind::changed && outcome.watchlist_changed)
    add_sentence(words, _("A spot on the watchlist has changed."));
  if (outcome.aged_out > 0)
    add_sentence(words, words_for_aged_out(outcome));
  if (!outcome.not_saved.empty())
    add_sentence(words, Glib::ustring::compose(_("The spots could not be saved: %1"),
                                               Glib::ustring(outcome.not_saved)));
  return words;
}

UpdateBar::UpdateBar()
    : stop_button_(_("_Stop"), true), update_button_(_("_Update anyway"), true),
      settings_button_(_("_Settings"), true), not_now_button_(_("_Not now"), true) {
  line_.add_css_class("update-bar");
  prepare(text_);
  texts_.append(text_);
  texts_.append(watchers_);
  texts_.set_hexpand(true);
  bar_.set_size_request(200, -1);
  stop_button_.signal_clicked().connect([this] { stop_.emit(); });
  update_button_.signal_clicked().connect([this] { update_anyway_.emit(); });
  settings_button_.set_action_name("win.settings");
  not_now_button_.signal_clicked().connect([this] {
    show_only({});
    set_reveal_child(false);
  });
  for (Gtk::Button *button : {&update_button_, &settings_button_, &not_now_button_})
    name_by_label_alone(*button);
  close_button_.set_icon_name("window-close-symbolic");
  close_button_.set_tooltip_text(_("Close"));
  set_accessible_name(close_button_, _("Close"));
  close_button_.add_css_class("flat");
  close_button_.signal_clicked().connect([this] { set_reveal_child(false); });
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&texts_, &bar_, &stop_button_, &update_button_,
                                            &settings_button_, &not_now_button_, &close_button_}) {
    part->set_valign(Gtk::Align::CENTER);
    line_.append(*part);
  }
  set_child(line_);
}

void UpdateBar::begin() {
  bar_.set_fraction(0);
  show_only({&bar_, &stop_button_});
  show_watchers({});
  show_progress({});
  set_reveal_child(true);
}

void UpdateBar::show_progress(const UpdateProgress &progress) {
  bar_.set_fraction(progress.fraction());
  show_text(words_for_progress(progress));
}

void UpdateBar::show_outcome(const UpdateOutcome &outcome) {
  show_only({&close_button_});
  show_text(words_for(outcome));
  show_watchers(lines_for_watchers(outcome.watchers));
}

void UpdateBar::show_watchers(const std::vector<Glib::ustring> &lines) {
  while (Gtk::Widget *line = watchers_.get_first_child())
    watchers_.remove(*line);
  for (const Glib::ustring &line : lines) {
    auto *label = Gtk::make_managed<Gtk::Label>(line);
    prepare(*label);
    watchers_.append(*label);
  }
}

void UpdateBar::show_question(std::size_t spots, std::int32_t age_limit) {
  // Not with the button that has an icon: its baseline is another, which GTK measures wrongly.
  show_only({&update_button_, &settings_button_, &not_now_button_});
  show_text(words_for_question(spots, age_limit));
  show_watchers({});
  set_reveal_child(true);
}

void UpdateBar::show_only(std::initializer_list<const Gtk::Widget *> shown) {
  for (Gtk::Widget *part = bar_.get_next_sibling(); part != nullptr;
       part = part->get_next_sibling())
    part->set_visible(std::ranges::find(shown, part) != shown.end());
  bar_.set_visible(std::ranges::find(shown, &bar_) != shown.end());
}

/** Progress comes often and mostly reads the same. */
void UpdateBar::show_text(const Glib::ustring &text) {
  if (text_.get_text().raw() != text.raw())
    text_.set_text(text);
}

}  // namespace velkor::app
