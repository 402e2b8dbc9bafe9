/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The spots that the user has placed, as the server knows them. */
#ifndef VELKOR_APP_WINDOW_OWN_SPOTS_PAGE_H
#define VELKOR_APP_WINDOW_OWN_SPOTS_PAGE_H

#include <cstdint>
#include <optional>
#include <vector>

#include <gtkmm.h>

#include "library/own_spots.h"
#include "library/session.h"
#include "widgets/entry_list.h"
#include "widgets/page.h"
#include "widgets/status_line.h"

namespace velkor::app {

class OwnSpotsPage : public Page {
public:
  explicit OwnSpotsPage(Session &session);
  ~OwnSpotsPage() override;

  void begin() override;

  /** The user opens one of the spots. */
  sigc::signal<void(std::int32_t id)> &signal_open() { return open_; }

private:
  void build_title_line();
  void fetch();
  void take(const OwnSpotsReply &reply);
  void show_spots(const std::vector<OwnSpot> &spots);
  void refresh();
  void refreshed(const std::string &failure);
  void open();
  [[nodiscard]] std::optional<std::int32_t> chosen() const;
  void enable();

  Session &session_;
  SharedCancellation request_;
  bool refreshing_ = false;  // the server has been asked to refresh a spot
  Gtk::Button fetch_button_;
  Gtk::Button refresh_button_;
  Gtk::Button open_button_;
  StatusLine status_;
  Gtk::Stack stack_;
  Gtk::Label *hint_;
  EntryList list_;
  sigc::signal<void(std::int32_t)> open_;
};

}  // namespace velkor::app

#endif
