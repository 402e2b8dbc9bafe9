/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/update_bar.h"

#include "support/owned.h"
#include "widgets/accessible_name.h"
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

}  // namespace

Glib::ustring words_for(const UpdateOutcome &outcome) {
  Glib::ustring words;
  switch (outcome.kind) {
  case UpdateOutcome::Kind::changed:
    words = counted("%1 spot received.", "%1 spots received.", outcome.received);
    break;
  case UpdateOutcome::Kind::stopped:
    words = _("The update was stopped. The next one fetches the same spots.");
    break;
  case UpdateOutcome::Kind::nothing_new:
  case UpdateOutcome::Kind::failed:
    words = outcome.message;
  }
  if (outcome.hits > 0)
    add_sentence(words, counted("%1 matches a watcher.", "%1 match a watcher.", outcome.hits));
  if (outcome.kind == UpdateOutcome::Kind::changed && outcome.watchlist_changed)
    add_sentence(words, _("A spot on the watchlist has changed."));
  if (outcome.aged_out > 0)
    add_sentence(words, counted("%1 old or deleted spot was removed.",
                                "%1 old or deleted spots were removed.", outcome.aged_out));
  if (!outcome.not_saved.empty())
    add_sentence(words, Glib::ustring::compose(_("The spots could not be saved: %1"),
                                               Glib::ustring(outcome.not_saved)));
  return words;
}

UpdateBar::UpdateBar() : stop_button_(_("_Stop"), true) {
  line_.add_css_class("update-bar");
  text_.set_xalign(0);
  text_.set_wrap(true);
  text_.set_hexpand(true);
  text_.set_selectable(true);
  text_.set_focusable(false);
  bar_.set_valign(Gtk::Align::CENTER);
  bar_.set_size_request(200, -1);
  stop_button_.signal_clicked().connect([this] { stop_.emit(); });
  close_button_.set_icon_name("window-close-symbolic");
  close_button_.set_tooltip_text(_("Close"));
  set_accessible_name(close_button_, _("Close"));
  close_button_.add_css_class("flat");
  close_button_.signal_clicked().connect([this] { set_reveal_child(false); });
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&text_, &bar_, &stop_button_, &close_button_})
    line_.append(*part);
  set_child(line_);
}

void UpdateBar::begin() {
  bar_.set_fraction(0);
  bar_.set_visible(true);
  stop_button_.set_visible(true);
  stop_button_.set_sensitive(true);
  close_button_.set_visible(false);
  show_progress({});
  set_reveal_child(true);
}

void UpdateBar::show_progress(const UpdateProgress &progress) {
  bar_.set_fraction(progress.fraction());
  show_text(words_for_progress(progress));
}

void UpdateBar::show_outcome(const UpdateOutcome &outcome) {
  bar_.set_visible(false);
  stop_button_.set_visible(false);
  close_button_.set_visible(true);
  show_text(words_for(outcome));
}

/** Progress comes often and mostly reads the same. */
void UpdateBar::show_text(const Glib::ustring &text) {
  if (text_.get_text().raw() != text.raw())
    text_.set_text(text);
}

}  // namespace velkor::app
