/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Saves the list that is shown in a file of the user's choice, as a page or as JSON. */
#ifndef VELKOR_APP_WINDOW_LIST_SAVER_H
#define VELKOR_APP_WINDOW_LIST_SAVER_H

#include <functional>
#include <string>

#include <gtkmm.h>

#include "library/job_thread.h"
#include "model/view_maker.h"

namespace velkor::app {

class ListSaver {
public:
  /** Told how it ended, on the main thread. */
  using Tell = std::function<void(const Glib::ustring &)>;

  ListSaver(Gtk::Window &window, Tell tell);

  /** Asks for the file; a name that ends with ".json" chooses that format. */
  void ask(SharedView view);

private:
  void save(const SharedView &view, const std::string &path);

  Gtk::Window &window_;
  Tell tell_;
  Glib::RefPtr<Gtk::FileChooserNative> chooser_;
  JobThread thread_;  // the last member: its jobs use others
};

}  // namespace velkor::app

#endif
