/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The watchlist: what is on it, and the copy that the server keeps. */
#ifndef VELKOR_APP_WINDOW_WATCHLIST_PAGE_H
#define VELKOR_APP_WINDOW_WATCHLIST_PAGE_H

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_set>

#include <gtkmm.h>

#include "library/server_watchlist.h"
#include "library/session.h"
#include "model/snapshot.h"
#include "widgets/entry_list.h"
#include "widgets/page.h"
#include "widgets/status_line.h"

namespace velkor::app {

class WatchlistPage : public Page {
public:
  /** @param watched  the watchlist, which outlives the page */
  WatchlistPage(Session &session, const std::unordered_set<std::int32_t> &watched);
  ~WatchlistPage() override;
  WatchlistPage(const WatchlistPage &) = delete;
  WatchlistPage &operator=(const WatchlistPage &) = delete;

  void begin() override;
  void set_snapshot(SharedSnapshot snapshot);
  /** The watchlist is another. */
  void show_watched();

  /** The user puts a spot on the watchlist or takes it off. */
  sigc::signal<void(std::int32_t id, bool watched)> &signal_watch() { return watch_; }
  sigc::signal<void(std::int32_t id)> &signal_open() { return open_; }

private:
  using Transfer = SharedCancellation (*)(Session &, WatchlistFunction);

  void build_title_line();
  void build_field();
  [[nodiscard]] ListEntry entry_of(std::int32_t id, std::optional<Row> row) const;
  [[nodiscard]] std::optional<std::int32_t> chosen() const;
  void transfer(Transfer what, std::function<Glib::ustring(const WatchlistResult &)> words);
  void add();
  void remove();
  void open();
  void enable();

  Session &session_;
  const std::unordered_set<std::int32_t> &watched_;
  SharedSnapshot snapshot_;
  SharedCancellation request_;
  bool transferring_ = false;
  Gtk::Button download_;
  Gtk::Button upload_;
  Gtk::Button open_button_;
  Gtk::Button remove_;
  StatusLine status_;
  Gtk::Stack stack_;
  Gtk::Label *hint_;
  EntryList list_;
  Gtk::Box field_{Gtk::Orientation::HORIZONTAL, 6};
  Gtk::Label number_name_;
  Gtk::Entry number_;
  Gtk::Button add_;
  Gtk::Label refusal_;
  sigc::signal<void(std::int32_t, bool)> watch_;
  sigc::signal<void(std::int32_t)> open_;
};

}  // namespace velkor::app

#endif
