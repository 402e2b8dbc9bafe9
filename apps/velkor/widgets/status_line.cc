/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/status_line.h"

namespace velkor::app {

StatusLine::StatusLine() {
  set_xalign(0);
  set_wrap(true);
  add_css_class("status-line");
  set_visible(false);
}

void StatusLine::tell(const Glib::ustring &text) {
  remove_css_class("error");
  set_text(text);
  set_visible(true);
}

void StatusLine::tell_failure(const Glib::ustring &text) {
  tell(text);
  add_css_class("error");
}

}  // namespace velkor::app
