/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The pages that take the place of the spots. Each is made when the user first comes to it, by an
 * action of the window.
 */
#ifndef VELKOR_APP_WINDOW_PAGES_H
#define VELKOR_APP_WINDOW_PAGES_H

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include <gtkmm.h>

#include "library/session.h"
#include "model/own_files.h"
#include "widgets/notice.h"
#include "widgets/page.h"
#include "window/cache_page.h"
#include "window/messages_page.h"
#include "window/own_spots_page.h"
#include "window/profile_page.h"
#include "window/settings_page.h"
#include "window/watchlist_page.h"

namespace velkor::app {

class Pages {
public:
  /** What the pages are part of; all of it outlives them. */
  struct Surroundings {
    Gtk::ApplicationWindow &window;
    Gtk::Stack &stack;
    Session &session;
    Notice &notice;
    const OwnFiles &files;
    const std::unordered_set<std::int32_t> &watched;  // the watchlist
  };

  explicit Pages(Surroundings surroundings);
  ~Pages();
  Pages(const Pages &) = delete;
  Pages &operator=(const Pages &) = delete;

  /** From the first one on, the pages can be opened. */
  void set_snapshot(SharedSnapshot snapshot);
  /** The watchlist is another. */
  void show_watched();
  /** The files of the cache are others, or were looked at. */
  void show_files(const std::vector<CachedFile> &files);
  [[nodiscard]] bool is_open() const;
  /** Shows again what was shown before the first page. */
  void back();

  void show_profile(const std::string &user);

  /** For the menu of the window. */
  [[nodiscard]] static Glib::RefPtr<Gio::Menu> menu();

  /** The user came to a page, or left it. */
  sigc::signal<void()> &signal_changed() { return changed_; }
  /** Settings were saved; tells whether there is an account now. */
  sigc::signal<void(bool)> &signal_account() { return account_; }
  /** The user puts a spot on the watchlist or takes it off, or opens one. */
  sigc::signal<void(std::int32_t id, bool watched)> &signal_watch() { return watch_; }
  sigc::signal<void(std::int32_t id)> &signal_open() { return open_; }

private:
  void add(const char *action, std::function<Page &()> page);
  void show(Page &page);
  Page &settings();
  MessagesPage &messages();
  Page &watchlist();
  Page &own_spots();
  Page &cache();

  Surroundings around_;
  SharedSnapshot snapshot_;
  Glib::ustring before_;  // the child of the stack that was shown before the pages
  std::vector<Glib::RefPtr<Gio::SimpleAction>> actions_;
  // Widgets of the stack; null until the user first comes to them.
  SettingsPage *settings_ = nullptr;
  MessagesPage *messages_ = nullptr;
  WatchlistPage *watchlist_ = nullptr;
  OwnSpotsPage *own_spots_ = nullptr;
  CachePage *cache_ = nullptr;
  ProfilePage *profile_ = nullptr;
  sigc::connection shown_;  // to the stack, which outlives the pages
  sigc::signal<void()> changed_;
  sigc::signal<void(bool)> account_;
  sigc::signal<void(std::int32_t, bool)> watch_;
  sigc::signal<void(std::int32_t)> open_;
};

}  // namespace velkor::app

#endif
