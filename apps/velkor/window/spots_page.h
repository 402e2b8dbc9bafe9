/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The page of spots: the tree of categories, the list, and what stands in their place when there
 * is nothing to list. */
#ifndef VELKOR_APP_WINDOW_SPOTS_PAGE_H
#define VELKOR_APP_WINDOW_SPOTS_PAGE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>

#include <gtkmm.h>

#include "model/remembered.h"
#include "model/view_maker.h"
#include "widgets/category_list.h"
#include "widgets/filter_bar.h"
#include "widgets/heartbeat.h"
#include "widgets/spot_table.h"

namespace velkor::app {

class SpotsPage : public Gtk::Paned {
public:
  SpotsPage(const Remembered &remembered, const std::unordered_set<std::int32_t> &watched,
            Heartbeat &heartbeat);
  ~SpotsPage() override;
  SpotsPage(const SpotsPage &) = delete;
  SpotsPage &operator=(const SpotsPage &) = delete;

  void set_snapshot(SharedSnapshot snapshot);
  void set_search(const std::string &text);
  /** Shows instead of the list why there is none. */
  void show_unusable(const Glib::ustring &message);
  void remember(Remembered &remembered) const;

  CategoryList &categories() { return categories_; }
  SpotTable &table() { return table_; }

  /** Shows the conditions that narrow the list; hiding them shows everything again. */
  void toggle_filter_bar();
  /** Has the list narrowed anew after a change of the watchlist. */
  void watch_changed(std::int32_t id);
  /** Shows everything in the list. */
  void show_everything();
  /** Why the list does not show that posting; empty when it does. */
  [[nodiscard]] Glib::ustring why_hidden(std::int32_t id) const;

  sigc::signal<void()> &signal_update_wanted() { return update_wanted_; }
  /** The list shows other rows. */
  sigc::signal<void()> &signal_shown() { return shown_; }

private:
  struct Inbox;

  void narrow();
  void want_view();
  void take_view(const SharedView &view);
  void show_state(const SpotView &view);
  void show_hint(const Glib::ustring &title, const Glib::ustring &text, bool offers_update);
  void build();

  Heartbeat &heartbeat_;
  SharedSnapshot snapshot_;
  SpotQuery query_;
  std::uint64_t latest_request_ = 0;
  CategoryList categories_;
  SpotTable table_;
  Gtk::Box main_{Gtk::Orientation::VERTICAL};
  FilterBar filter_bar_;
  Gtk::Box side_{Gtk::Orientation::VERTICAL};
  Gtk::Stack stack_;
  Gtk::Box hint_{Gtk::Orientation::VERTICAL, 12};
  Gtk::Label hint_title_;
  Gtk::Label hint_text_;
  Gtk::Button hint_button_;
  Gtk::Spinner spinner_;
  Gtk::Label count_;
  sigc::signal<void()> update_wanted_;
  sigc::signal<void()> shown_;
  /** Outlives the page as long as views are on their way to it. */
  std::shared_ptr<Inbox> inbox_;
  std::unique_ptr<ViewMaker> maker_;  // the last member: it uses the inbox
};

}  // namespace velkor::app

#endif
