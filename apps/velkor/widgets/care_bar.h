/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Tells that a file of the cache could not be read or was kept, and leads to what to do. */
#ifndef VELKOR_APP_WIDGETS_CARE_BAR_H
#define VELKOR_APP_WIDGETS_CARE_BAR_H

#include <vector>

#include <gtkmm.h>

#include "model/cached_files.h"

namespace velkor::app {

class CareBar : public Gtk::Box {
public:
  CareBar();

  /** Shows itself if there is something to say that the user has not closed yet. */
  void set_files(const std::vector<CachedFile> &files);

private:
  std::vector<CachedFile> files_;  // that it tells about
  Gtk::Label text_;
  Gtk::Button open_button_;
  Gtk::Button close_button_;
};

/** A sentence or two that say what is wrong and what to do; empty when nothing is. */
Glib::ustring words_for(CacheCare care);

}  // namespace velkor::app

#endif
