/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/pages.h"

#include <utility>

#include "widgets/translation.h"

namespace velkor::app {

Pages::Pages(Surroundings surroundings) : around_(std::move(surroundings)) {
  shown_ =
      around_.stack.property_visible_child().signal_changed().connect([this] { changed_.emit(); });
  around_.window.add_action("back", [this] { back(); });
  add("messages", [this]() -> Page & { return messages(); });
  add("watchlist", [this]() -> Page & { return watchlist(); });
  add("own-spots", [this]() -> Page & { return own_spots(); });
  add("cache", [this]() -> Page & { return cache(); });
  add("settings", [this]() -> Page & { return settings(); });
}

Pages::~Pages() {
  shown_.disconnect();
}

void Pages::add(const char *action, std::function<Page &()> page) {
  actions_.push_back(
      around_.window.add_action(action, [this, page = std::move(page)] { show(page()); }));
  actions_.back()->set_enabled(false);
}

Glib::RefPtr<Gio::Menu> Pages::menu() {
  auto menu = Gio::Menu::create();
  menu->append(_("_Messages"), "win.messages");
  menu->append(_("_Watchlist"), "win.watchlist");
  menu->append(_("My s_pots"), "win.own-spots");
  menu->append(_("_Cache files"), "win.cache");
  menu->append(_("_Settings"), "win.settings");
  return menu;
}

void Pages::set_snapshot(SharedSnapshot snapshot) {
  snapshot_ = std::move(snapshot);
  for (const auto &action : actions_)
    action->set_enabled(true);
  if (settings_ != nullptr)
    settings_->set_snapshot(snapshot_);
  if (watchlist_ != nullptr)
    watchlist_->set_snapshot(snapshot_);
}

void Pages::show_watched() {
  if (watchlist_ != nullptr)
    watchlist_->show_watched();
}

void Pages::show_files(const std::vector<CachedFile> &files) {
  if (cache_ != nullptr)
    cache_->set_files(files);
}

bool Pages::is_open() const {
  return dynamic_cast<const Page *>(around_.stack.get_visible_child()) != nullptr;
}

void Pages::show(Page &page) {
  if (!is_open())
    before_ = around_.stack.get_visible_child_name();
  if (page.get_parent() == nullptr)
    around_.stack.add(page);
  around_.stack.set_visible_child(page);
  page.begin();
}

void Pages::back() {
  if (is_open())
    around_.stack.set_visible_child(before_);
}

Page &Pages::settings() {
  if (settings_ == nullptr) {
    settings_ =
        Gtk::make_managed<SettingsPage>(around_.session, around_.notice, around_.files.servers);
    settings_->set_snapshot(snapshot_);
    settings_->signal_saved().connect([this](bool has_account) { account_.emit(has_account); });
  }
  return *settings_;
}

MessagesPage &Pages::messages() {
  if (messages_ == nullptr)
    messages_ =
        Gtk::make_managed<MessagesPage>(around_.session, around_.notice, around_.files.read_marks);
  return *messages_;
}

Page &Pages::watchlist() {
  if (watchlist_ == nullptr) {
    watchlist_ = Gtk::make_managed<WatchlistPage>(around_.session, around_.watched);
    watchlist_->set_snapshot(snapshot_);
    watchlist_->signal_watch().connect(
        [this](std::int32_t id, bool watched) { watch_.emit(id, watched); });
    watchlist_->signal_open().connect([this](std::int32_t id) { open_.emit(id); });
  }
  return *watchlist_;
}

Page &Pages::own_spots() {
  if (own_spots_ == nullptr) {
    own_spots_ = Gtk::make_managed<OwnSpotsPage>(around_.session);
    own_spots_->signal_open().connect([this](std::int32_t id) { open_.emit(id); });
  }
  return *own_spots_;
}

Page &Pages::cache() {
  if (cache_ == nullptr)
    cache_ = Gtk::make_managed<CachePage>(around_.session);
  return *cache_;
}

void Pages::show_profile(const std::string &user) {
  if (profile_ == nullptr) {
    profile_ = Gtk::make_managed<ProfilePage>(around_.session);
    profile_->signal_write().connect([this](const std::string &name) {
      show(messages());
      messages().write_to(name);
    });
  }
  profile_->set_user(user);
  show(*profile_);
}

}  // namespace velkor::app
