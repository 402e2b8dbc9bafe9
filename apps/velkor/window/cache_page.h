/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The files of the cache, and what to do when one of them cannot be read. */
#ifndef VELKOR_APP_WINDOW_CACHE_PAGE_H
#define VELKOR_APP_WINDOW_CACHE_PAGE_H

#include <vector>

#include <gtkmm.h>

#include "library/session.h"
#include "model/cached_files.h"
#include "widgets/entry_list.h"
#include "widgets/page.h"
#include "widgets/status_line.h"

namespace velkor::app {

class CachePage : public Page {
public:
  explicit CachePage(Session &session);

  void begin() override;
  void set_files(const std::vector<CachedFile> &files);

private:
  void build_title_line();

  Session &session_;
  std::vector<CachedFile> files_;
  Gtk::Button fetch_button_;
  StatusLine status_;
  EntryList list_;
};

}  // namespace velkor::app

#endif
