/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/spots_page.h"

#include <utility>

#include "library/main_loop.h"
#include "widgets/hidden_text.h"
#include "widgets/translation.h"

namespace velkor::app {

/** Where views arrive; of the main thread. */
struct SpotsPage::Inbox {
  SpotsPage *page;
};

SpotsPage::SpotsPage(const Remembered &remembered, const std::unordered_set<std::int32_t> &watched,
                     Heartbeat &heartbeat)
    : heartbeat_(heartbeat), table_(remembered, watched), filter_bar_(watched),
      hint_button_(_("_Update now"), true), inbox_(std::make_shared<Inbox>(Inbox{this})),
      maker_(std::make_unique<ViewMaker>([inbox = inbox_](const SharedView &view) {
        run_on_main_loop([inbox, view] {
          if (inbox->page != nullptr)
            inbox->page->take_view(view);
        });
      })) {
  query_.sorting = remembered.sorting;
  build();
  set_position(remembered.tree_width);
  categories_.signal_selected().connect([this](std::size_t entry) {
    query_.entry = entry;
    want_view();
  });
  table_.signal_sorted().connect([this] {
    query_.sorting = table_.sorting();
    heartbeat_.begin("sort");
    want_view();
  });
  filter_bar_.signal_changed().connect([this] { narrow(); });
  hint_button_.signal_clicked().connect([this] { update_wanted_.emit(); });
}

SpotsPage::~SpotsPage() {
  inbox_->page = nullptr;
}

void SpotsPage::build() {
  hint_title_.add_css_class("title-2");
  hint_text_.set_wrap(true);
  hint_text_.set_justify(Gtk::Justification::CENTER);
  hint_text_.set_max_width_chars(60);
  hint_button_.set_halign(Gtk::Align::CENTER);
  hint_button_.add_css_class("suggested-action");
  hint_button_.add_css_class("pill");
  hint_.set_valign(Gtk::Align::CENTER);
  hint_.add_css_class("hint");
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&hint_title_, &hint_text_, &hint_button_})
    hint_.append(*part);
  spinner_.set_size_request(32, 32);
  spinner_.set_halign(Gtk::Align::CENTER);
  spinner_.set_valign(Gtk::Align::CENTER);
  spinner_.start();
  stack_.add(spinner_, "loading");
  stack_.add(table_, "list");
  stack_.add(hint_, "hint");
  stack_.set_expand(true);
  count_.add_css_class("status-line");
  count_.set_xalign(0);
  categories_.set_vexpand(true);
  side_.append(categories_);
  side_.append(count_);
  side_.add_css_class("side");
  set_start_child(side_);
  filter_bar_.set_visible(false);
  main_.append(filter_bar_);
  main_.append(stack_);
  set_end_child(main_);
  set_resize_start_child(false);
  set_shrink_start_child(false);
  set_shrink_end_child(false);
}

void SpotsPage::set_snapshot(SharedSnapshot snapshot) {
  if (snapshot_ && query_.entry < snapshot_->tree.size())
    query_.entry = matching_entry(snapshot->tree, snapshot_->tree[query_.entry]);
  snapshot_ = std::move(snapshot);
  categories_.set_tree(snapshot_->tree, query_.entry);
  filter_bar_.set_states(snapshot_->words.states);
  filter_bar_.apply_to(query_);
  want_view();
}

void SpotsPage::toggle_filter_bar() {
  const bool show = !filter_bar_.get_visible();
  filter_bar_.set_visible(show);
  if (show)
    filter_bar_.focus_first();
  else
    filter_bar_.clear();
}

void SpotsPage::narrow() {
  filter_bar_.apply_to(query_);
  want_view();
}

void SpotsPage::watch_changed(std::int32_t id) {
  table_.watch_changed(id);
  if (query_.conditions.ids)
    narrow();
}

void SpotsPage::show_everything() {
  filter_bar_.clear();
  categories_.select_first();
}

Glib::ustring SpotsPage::why_hidden(std::int32_t id) const {
  return snapshot_ ? words_for_hidden(*snapshot_, query_, id) : Glib::ustring();
}

void SpotsPage::set_search(const std::string &text) {
  if (text == query_.text)
    return;
  query_.text = text;
  heartbeat_.begin("search");
  want_view();
}

void SpotsPage::want_view() {
  if (snapshot_)
    latest_request_ = maker_->request(snapshot_, query_);
}

void SpotsPage::take_view(const SharedView &view) {
  if (view->request != latest_request_)
    return;  // the next one is on its way
  table_.set_view(view);
  show_state(*view);
  shown_.emit();
  for (const char *what : {"list", "search", "sort"})
    heartbeat_.painted(what, *this);
}

void SpotsPage::show_state(const SpotView &view) {
  spinner_.stop();
  count_.set_text(counted("%1 spot", "%1 spots", static_cast<std::int64_t>(view.rows.size())));
  if (!view.rows.empty())
    stack_.set_visible_child("list");
  else if (snapshot_->table.size() == 0)
    show_hint(_("No spots yet"), _("An update fetches the spots from the server."), true);
  else if (!view.query.text.empty())
    show_hint(
        _("Nothing found"),
        _("No title here holds this text. Try fewer letters, or choose All spots on the left."),
        false);
  else if (view.query.marks != 0 || view.query.conditions != SpotConditions{})
    show_hint(_("Nothing found"), _("No spot here meets the conditions above the list."), false);
  else
    show_hint(_("Nothing here"), _("No spot belongs to this category."), false);
}

void SpotsPage::show_hint(const Glib::ustring &title, const Glib::ustring &text,
                          bool offers_update) {
  hint_title_.set_text(title);
  hint_text_.set_text(text);
  hint_button_.set_visible(offers_update);
  stack_.set_visible_child("hint");
}

void SpotsPage::show_unusable(const Glib::ustring &message) {
  spinner_.stop();
  show_hint(_("The cache cannot be used"), message, false);
}

void SpotsPage::remember(Remembered &remembered) const {
  remembered.tree_width = get_position();
  remembered.sorting = query_.sorting;
  table_.remember_widths(remembered);
}

}  // namespace velkor::app
