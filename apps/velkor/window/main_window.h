/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The window: its header, its pages and its actions, which it passes on to the library. */
#ifndef VELKOR_APP_WINDOW_MAIN_WINDOW_H
#define VELKOR_APP_WINDOW_MAIN_WINDOW_H

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_set>
#include <vector>

#include <gtkmm.h>

#include "library/session.h"
#include "model/own_files.h"
#include "model/remembered.h"
#include "widgets/care_bar.h"
#include "widgets/heartbeat.h"
#include "widgets/notice.h"
#include "widgets/update_bar.h"
#include "window/account_page.h"
#include "window/list_saver.h"
#include "window/pages.h"
#include "window/posting_page.h"
#include "window/spots_page.h"
#include "window/updater.h"

namespace velkor::app {

class MainWindow : public Gtk::ApplicationWindow {
public:
  MainWindow(SessionOptions options, OwnFiles files, Heartbeat &heartbeat);

  /** Shows the posting, as soon as the cache has been read. */
  void open_posting(std::int32_t id);

  /** Lets go of the library; then `closed` is called. The window is hidden at once. */
  void close_session(std::function<void()> closed);

protected:
  bool on_close_request() override;

private:
  void build(const Remembered &remembered);
  void build_header();
  void build_menu();
  void connect_pages();
  void add_actions();
  void add_posting_actions();

  void take_snapshot(SharedSnapshot snapshot);
  void show_unusable(const std::string &message);
  void update(Session::Extent extent = Session::Extent::what_is_new);
  void show_files(const std::vector<CachedFile> &files);
  void account_set();
  void show_posting(std::int32_t id);
  void close_posting();
  void show_in_list();
  void save_list();
  void toggle_watch();
  /** As the user wants it, who can undo that. */
  void watch(std::int32_t id, bool watched);
  void set_watched(std::int32_t id, bool watched);
  void give_kudos();
  void warn(const std::string &reason);
  void show_profile();
  void send_reaction(std::int32_t id, const std::string &text);
  void enable_actions();
  void remember();

  Heartbeat &heartbeat_;
  OwnFiles files_;
  Remembered remembered_;
  std::unordered_set<std::int32_t> watched_;
  SharedSnapshot snapshot_;
  bool has_account_ = false;
  std::optional<std::int32_t> wanted_posting_;  // until the cache has been read
  SharedCancellation posting_request_;

  Gtk::HeaderBar header_;
  Gtk::Button update_button_;
  Gtk::SearchEntry search_;
  Gtk::MenuButton menu_;
  Gtk::Button filter_button_;
  Gtk::Overlay overlay_;
  Gtk::Box content_{Gtk::Orientation::VERTICAL};
  UpdateBar update_bar_;
  CareBar care_bar_;
  Notice notice_;
  Gtk::Stack stack_;
  Updater updater_;
  AccountPage account_page_;
  Gtk::Paned split_{Gtk::Orientation::VERTICAL};
  SpotsPage spots_;
  PostingPage posting_;
  ListSaver saver_;
  Pages pages_;
  Session session_;  // the last member: what it tells about reaches all others
};

}  // namespace velkor::app

#endif
