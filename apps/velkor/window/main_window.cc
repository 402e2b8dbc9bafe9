/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/main_window.h"

#include <array>
#include <utility>

#include "desktop/browser.h"
#include "widgets/accessible_name.h"
#include "widgets/answer_text.h"
#include "widgets/translation.h"
#include "window/shortcuts.h"

namespace velkor::app {

MainWindow::MainWindow(SessionOptions options, OwnFiles files, Heartbeat &heartbeat)
    : heartbeat_(heartbeat), files_(std::move(files)), remembered_(read_remembered(files_.window)),
      updater_(session_, update_bar_, watched_), account_page_(session_, files_.servers),
      spots_(remembered_, watched_, heartbeat),
      saver_(*this, [this](const Glib::ustring &text) { notice_.show_text(text); }),
      pages_({*this, stack_, session_, notice_, files_, watched_}),
      session_(std::move(options),
               {.snapshot = [this](SharedSnapshot snapshot) { take_snapshot(std::move(snapshot)); },
                .unusable = [this](const std::string &message) { show_unusable(message); },
                .update_progress =
                    [this](const UpdateProgress &progress) { updater_.show_progress(progress); },
                .update_ended = [this](const UpdateOutcome &outcome) { updater_.end(outcome); },
                .files = [this](const std::vector<CachedFile> &cached) { show_files(cached); }}) {
  build(remembered_);
  add_actions();
  add_posting_actions();
  connect_pages();
  enable_actions();
  heartbeat_.painted("window", *this);
}

void MainWindow::build(const Remembered &remembered) {
  set_title(_("Velkor"));
  set_icon_name("org.Velkor.Velkor");
  set_default_size(remembered.width, remembered.height);
  if (remembered.maximized)
    maximize();
  build_header();
  split_.set_start_child(spots_);
  split_.set_end_child(posting_);
  split_.set_shrink_start_child(false);
  split_.set_shrink_end_child(false);
  split_.set_position(remembered.list_height);
  posting_.set_visible(false);
  stack_.add(split_, "spots");
  stack_.add(account_page_, "account");
  stack_.set_expand(true);
  content_.append(update_bar_);
  content_.append(care_bar_);
  content_.append(stack_);
  overlay_.set_child(content_);
  overlay_.add_overlay(notice_);
  set_child(overlay_);
  add_shortcuts_window(*this);
}

void MainWindow::build_header() {
  update_button_.set_icon_name("view-refresh-symbolic");
  update_button_.set_tooltip_text(_("Fetch what is new (F5)"));
  update_button_.set_action_name("win.update");
  set_accessible_name(update_button_, _("Update"));
  search_.property_placeholder_text() = _("Search in the titles");
  set_accessible_name(search_, _("Search in the titles"));
  search_.set_max_width_chars(50);
  search_.set_hexpand(true);
  search_.set_key_capture_widget(spots_.table());
  build_menu();
  header_.pack_start(update_button_);
  header_.set_title_widget(search_);
  header_.pack_end(menu_);
  filter_button_.set_icon_name("view-more-horizontal-symbolic");
  filter_button_.set_tooltip_text(_("Narrow the list (Ctrl+Shift+F)"));
  filter_button_.set_action_name("win.filter");
  set_accessible_name(filter_button_, _("Narrow the list"));
  header_.pack_end(filter_button_);
  set_titlebar(header_);
}

void MainWindow::build_menu() {
  const auto menu = Gio::Menu::create();
  menu->append(_("_Update"), "win.update");
  menu->append(_("_Save the list…"), "win.save-list");
  menu->append_section(Pages::menu());
  menu->append(_("_Keys"), "win.show-help-overlay");
  menu->append(_("_About Velkor"), "app.about");
  menu->append(_("_Quit"), "app.quit");
  menu_.set_menu_model(menu);
  menu_.set_icon_name("open-menu-symbolic");
  menu_.set_tooltip_text(_("Menu"));
  menu_.set_primary(true);
  set_accessible_name(menu_, _("Menu"));
}

void MainWindow::connect_pages() {
  // Not its own signal for searches, which waits until the user stops typing.
  search_.property_text().signal_changed().connect(
      [this] { spots_.set_search(search_.get_text().raw()); });
  search_.signal_activate().connect([this] { spots_.table().focus_list(); });
  search_.signal_stop_search().connect([this] {
    search_.set_text("");
    spots_.table().focus_list();
  });
  spots_.table().signal_open().connect([this](std::int32_t id) { show_posting(id); });
  spots_.table().signal_selected().connect([this] { enable_actions(); });
  spots_.signal_update_wanted().connect([this] { update(); });
  spots_.signal_shown().connect([this] { posting_.show_hidden(spots_.why_hidden(posting_.id())); });
  updater_.signal_changed().connect([this] { enable_actions(); });
  account_page_.signal_done().connect([this] { account_set(); });
  pages_.signal_account().connect([this](bool has_account) {
    has_account_ = has_account;
    enable_actions();
  });
  pages_.signal_watch().connect([this](std::int32_t id, bool watched) { watch(id, watched); });
  pages_.signal_open().connect([this](std::int32_t id) { open_posting(id); });
  pages_.signal_changed().connect([this] { enable_actions(); });
  posting_.warning().signal_send().connect([this](const std::string &reason) { warn(reason); });
  posting_.reactions().signal_send().connect(
      [this](std::int32_t id, const std::string &text) { send_reaction(id, text); });
}

void MainWindow::add_actions() {
  add_action("update", [this] { update(); });
  add_action("fetch-everything", [this] { update(Session::Extent::everything); });
  add_action("stop-update", [this] { updater_.stop(); });
  add_action("undo", [this] { notice_.undo(); });
  add_action("close", [this] { close(); });
  add_action("search", [this] {
    pages_.back();
    search_.grab_focus();
  });
  add_action("filter", [this] { spots_.toggle_filter_bar(); });
  add_action("save-list", [this] { save_list(); });
  add_action("focus-categories", [this] { spots_.categories().focus_list(); });
  add_action("focus-list", [this] { spots_.table().focus_list(); });
}

void MainWindow::add_posting_actions() {
  add_action("close-posting", [this] { close_posting(); });
  add_action("watch", [this] { toggle_watch(); });
  add_action("kudos", [this] { give_kudos(); });
  add_action("warn", [this] { posting_.begin_warning(); });
  add_action("open-link", [this] { open_in_browser(*this, posting_.details().link); });
  add_action("open-image", [this] { open_in_browser(*this, posting_.details().image); });
  add_action("show-in-list", [this] { show_in_list(); });
  add_action("profile", [this] { show_profile(); });
  add_action("reactions", [this] { posting_.show_reactions(); });
}

void MainWindow::enable_actions() {
  const auto enable = [this](const char *name, bool enabled) {
    std::dynamic_pointer_cast<Gio::SimpleAction>(lookup_action(name))->set_enabled(enabled);
  };
  const bool is_open = posting_.get_visible() && !pages_.is_open();
  for (const char *name : {"update", "fetch-everything"})
    enable(name, snapshot_ && has_account_ && !updater_.runs());
  enable("stop-update", updater_.runs());
  for (const char *name : {"filter", "save-list"})
    enable(name, !pages_.is_open());
  enable("watch", is_open || (spots_.table().selected_id() && !pages_.is_open()));
  for (const char *name :
       {"close-posting", "kudos", "warn", "profile", "reactions", "open-link", "open-image"})
    enable(name, is_open);
}

void MainWindow::take_snapshot(SharedSnapshot snapshot) {
  snapshot_ = std::move(snapshot);
  watched_ = snapshot_->watched;
  has_account_ = has_account_ || snapshot_->has_account;
  spots_.set_snapshot(snapshot_);
  pages_.set_snapshot(snapshot_);
  updater_.set_snapshot(snapshot_);
  if (!has_account_ && snapshot_->table.size() == 0) {
    stack_.set_visible_child("account");
    account_page_.begin();
  }
  enable_actions();
  if (const auto id = std::exchange(wanted_posting_, std::nullopt))
    open_posting(*id);
}

void MainWindow::show_unusable(const std::string &message) {
  spots_.show_unusable(message);
}

void MainWindow::show_files(const std::vector<CachedFile> &files) {
  care_bar_.set_files(files);
  pages_.show_files(files);
}

void MainWindow::account_set() {
  has_account_ = true;
  stack_.set_visible_child("spots");
  enable_actions();
  update();
}

void MainWindow::update(Session::Extent extent) {
  if (has_account_)
    updater_.start(extent);
}

void MainWindow::open_posting(std::int32_t id) {
  if (!snapshot_) {
    wanted_posting_ = id;
    return;
  }
  spots_.table().select(id);
  show_posting(id);
}

void MainWindow::show_posting(std::int32_t id) {
  pages_.back();
  if (posting_request_)
    posting_request_->cancel();
  posting_.begin(id);
  posting_.set_watched(watched_.contains(id));
  posting_.show_hidden(spots_.why_hidden(id));
  posting_.set_visible(true);
  enable_actions();
  heartbeat_.begin("posting");
  if (!has_account_) {
    posting_.show_reply({.failure = _("Without an account, the server tells nothing.")}, {});
    return;
  }
  posting_request_ = session_.fetch_posting(id, [this](const PostingReply &reply) {
    posting_.show_reply(reply, snapshot_->words);
    heartbeat_.painted("posting", posting_);
  });
}

void MainWindow::close_posting() {
  if (posting_request_)
    posting_request_->cancel();
  posting_.set_visible(false);
  spots_.table().focus_list();
  enable_actions();
}

void MainWindow::show_in_list() {
  search_.set_text("");
  spots_.show_everything();
  spots_.table().select(posting_.id());
}

/** The posting that is open, else the one that is chosen in the list. */
void MainWindow::toggle_watch() {
  const std::optional<std::int32_t> id =
      posting_.get_visible() ? std::optional(posting_.id()) : spots_.table().selected_id();
  if (!id)
    return;
  watch(*id, !watched_.contains(*id));
}

void MainWindow::watch(std::int32_t id, bool watched) {
  set_watched(id, watched);
  notice_.show_text(watched ? _("Put on the watchlist") : _("Taken off the watchlist"),
                    [this, id, watched] { set_watched(id, !watched); });
}

void MainWindow::set_watched(std::int32_t id, bool watched) {
  if (watched)
    watched_.insert(id);
  else
    watched_.erase(id);
  session_.set_watched(id, watched);
  spots_.watch_changed(id);
  pages_.show_watched();
  if (posting_.id() == id)
    posting_.set_watched(watched);
}

void MainWindow::give_kudos() {
  if (!has_account_)
    return;
  const std::int32_t id = posting_.id();
  session_.give_kudos(id, [this, id](const ActionOutcome &outcome) {
    if (outcome.taken())
      notice_.show_text(_("Kudos given"));
    if (posting_.id() == id)
      posting_.show_refusal(words_for_refusal(outcome));
  });
}

void MainWindow::warn(const std::string &reason) {
  const std::int32_t id = posting_.id();
  session_.warn(id, reason, [this, id](const ActionOutcome &outcome) {
    if (posting_.id() == id)
      posting_.warning().show_sent(words_for_refusal(outcome));
    if (outcome.taken())
      notice_.show_text(_("The moderators have been warned"));
  });
}

void MainWindow::save_list() {
  if (const SharedView view = spots_.table().view())
    saver_.ask(view);
}

/** Until the posting has been read, nobody is known. */
void MainWindow::show_profile() {
  if (has_account_ && !posting_.details().poster.empty())
    pages_.show_profile(posting_.details().poster);
}

void MainWindow::send_reaction(std::int32_t id, const std::string &text) {
  session_.send_reaction(id, text, [this, id](const ActionOutcome &outcome) {
    if (posting_.id() != id)
      return;
    posting_.reactions().show_sent(words_for_refusal(outcome));
    if (outcome.taken())
      show_posting(id);
  });
}

void MainWindow::remember() {
  get_default_size(remembered_.width, remembered_.height);
  remembered_.maximized = is_maximized();
  if (posting_.get_visible())
    remembered_.list_height = split_.get_position();
  spots_.remember(remembered_);
  write_remembered(files_.window, remembered_);
}

bool MainWindow::on_close_request() {
  get_application()->activate_action("quit");
  return true;
}

void MainWindow::close_session(std::function<void()> closed) {
  remember();
  set_visible(false);
  session_.close(std::move(closed));
}

}  // namespace velkor::app
