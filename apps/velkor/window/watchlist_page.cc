/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/watchlist_page.h"

#include <utility>

#include "model/watched_spots.h"
#include "widgets/translation.h"

namespace velkor::app {

WatchlistPage::WatchlistPage(Session &session, const std::unordered_set<std::int32_t> &watched)
    : Page(_("Watchlist")), session_(session), watched_(watched),
      download_(_("_Get from the server"), true), upload_(_("_Store on the server"), true),
      open_button_(_("_Open"), true), remove_(_("_Remove"), true),
      hint_(
          hint_label(_("No spots on the watchlist. Open a spot and press Ctrl+D, enter the number "
                       "of one below, or get what the server keeps for you."))),
      list_(_("Watchlist")), number_name_(_("_Number of a spot"), true), add_(_("_Add"), true) {
  build_title_line();
  build_field();
  list_.signal_chosen().connect([this] { enable(); });
  list_.signal_opened().connect([this] { open(); });
  list_.signal_delete().connect([this] { remove(); });
  stack_.add(list_, "list");
  stack_.add(*hint_, "hint");
  stack_.set_vexpand(true);
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&status_, &stack_, &refusal_, &field_})
    append(*part);
}

WatchlistPage::~WatchlistPage() {
  if (request_)
    request_->cancel();
}

void WatchlistPage::build_title_line() {
  download_.set_tooltip_text(_("Add the spots of the watchlist that the server keeps"));
  upload_.set_tooltip_text(_("Replace the watchlist that the server keeps by this one"));
  remove_.set_tooltip_text(_("Take the spot off the watchlist (Delete)"));
  download_.signal_clicked().connect([this] {
    transfer(download_watchlist, [](const WatchlistResult &result) {
      return result.added == 0 ? Glib::ustring(_("The server keeps nothing that is not here."))
                               : counted("%1 spot added.", "%1 spots added.",
                                         static_cast<std::int64_t>(result.added));
    });
  });
  upload_.signal_clicked().connect([this] {
    transfer(upload_watchlist, [](const WatchlistResult & /*result*/) {
      return Glib::ustring(_("The server keeps this watchlist now."));
    });
  });
  open_button_.signal_clicked().connect([this] { open(); });
  remove_.signal_clicked().connect([this] { remove(); });
  for (Gtk::Button *button : {&download_, &upload_, &open_button_, &remove_}) {
    name_by_label_alone(*button);
    add_to_title_line(*button);
  }
}

void WatchlistPage::build_field() {
  number_name_.set_mnemonic_widget(number_);
  name_by_label_alone(add_);
  number_.signal_activate().connect([this] { add(); });
  number_.signal_changed().connect([this] { refusal_.set_visible(false); });
  add_.signal_clicked().connect([this] { add(); });
  refusal_.add_css_class("error");
  refusal_.set_xalign(0);
  refusal_.set_visible(false);
  for (Gtk::Widget *part : std::initializer_list<Gtk::Widget *>{&number_name_, &number_, &add_})
    field_.append(*part);
  field_.add_css_class("page-title");
}

void WatchlistPage::begin() {
  show_watched();
  if (watched_.empty())
    number_.grab_focus();
  else
    list_.focus_list();
}

void WatchlistPage::set_snapshot(SharedSnapshot snapshot) {
  snapshot_ = std::move(snapshot);
  show_watched();
}

void WatchlistPage::show_watched() {
  if (!snapshot_)
    return;
  std::vector<ListEntry> entries;
  for (const WatchedSpot &spot : watched_spots(*snapshot_, watched_))
    entries.push_back(entry_of(spot.id, spot.row));
  list_.set_entries(entries);
  stack_.set_visible_child(entries.empty() ? "hint" : "list");
  enable();
}

ListEntry WatchlistPage::entry_of(std::int32_t id, std::optional<Row> row) const {
  ListEntry entry{.id = static_cast<std::uint64_t>(id),
                  .title = Glib::ustring::compose(_("Posting %1"), id),
                  .detail = _("Not in the list: an update has not brought it, or it is too old.")};
  if (!row)
    return entry;
  entry.title = Glib::ustring(std::string(snapshot_->table.title(*row)));
  entry.detail = Glib::ustring(snapshot_->status_name(*row)) + " — " +
                 Glib::ustring(snapshot_->category_name(*row)) + " — " +
                 moment_text(snapshot_->table.stamp(*row));
  return entry;
}

std::optional<std::int32_t> WatchlistPage::chosen() const {
  const std::optional<std::uint64_t> id = list_.chosen();
  return id ? std::optional(static_cast<std::int32_t>(*id)) : std::nullopt;
}

void WatchlistPage::transfer(Transfer what,
                             std::function<Glib::ustring(const WatchlistResult &)> words) {
  transferring_ = true;
  enable();
  status_.tell(_("Asking the server…"));
  request_ = what(session_, [this, words = std::move(words)](const WatchlistResult &result) {
    transferring_ = false;
    enable();
    if (result.failure.empty())
      status_.tell(words(result));
    else
      status_.tell_failure(result.failure);
    if (result.added > 0)
      session_.refresh();
  });
}

void WatchlistPage::add() {
  const std::optional<std::int32_t> id = spot_number(number_.get_text().raw());
  if (!id || watched_.contains(*id)) {
    refusal_.set_text(id ? _("This spot is on the watchlist already.")
                         : _("This is not the number of a spot."));
    refusal_.set_visible(true);
    return;
  }
  number_.set_text("");
  watch_.emit(*id, true);
}

void WatchlistPage::remove() {
  const std::optional<std::int32_t> id = chosen();
  if (!id)
    return;
  const guint place = list_.place();
  watch_.emit(*id, false);
  list_.choose(place);
}

void WatchlistPage::open() {
  if (const std::optional<std::int32_t> id = chosen())
    open_.emit(*id);
}

void WatchlistPage::enable() {
  const bool is_chosen = list_.chosen().has_value();
  open_button_.set_sensitive(is_chosen);
  remove_.set_sensitive(is_chosen);
  download_.set_sensitive(!transferring_);
  upload_.set_sensitive(!transferring_ && !watched_.empty());
}

}  // namespace velkor::app
