/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/care_bar.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "widgets/accessible_name.h"
#include "widgets/page.h"
#include "widgets/translation.h"

namespace velkor::app {

Glib::ustring words_for(CacheCare care) {
  switch (care) {
  case CacheCare::none:
    break;
  case CacheCare::fetch_spots:
    return _("The spots in the cache could not be read. Fetch everything again to have them back; "
             "the damaged file is kept.");
  case CacheCare::damaged:
    return _("A file of the cache could not be read. It is kept when a new one is written.");
  case CacheCare::kept:
    return _("A file of the cache could not be read or was emptied, and has been kept.");
  }
  return "";
}

CareBar::CareBar()
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, 12), open_button_(_("_Cache files"), true) {
  add_css_class("update-bar");
  set_visible(false);
  text_.set_xalign(0);
  text_.set_ellipsize(Pango::EllipsizeMode::END);
  text_.set_hexpand(true);
  name_by_label_alone(open_button_);
  open_button_.set_action_name("win.cache");
  close_button_.set_icon_name("window-close-symbolic");
  close_button_.set_tooltip_text(_("Close"));
  set_accessible_name(close_button_, _("Close"));
  close_button_.add_css_class("flat");
  close_button_.signal_clicked().connect([this] { set_visible(false); });
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&text_, &open_button_, &close_button_})
    append(*part);
}

void CareBar::set_files(const std::vector<CachedFile> &files) {
  std::vector<CachedFile> wrong;
  std::ranges::copy_if(files, std::back_inserter(wrong), [](const CachedFile &file) {
    return file.state != CachedFile::State::sound;
  });
  if (wrong == files_)
    return;
  files_ = std::move(wrong);
  const Glib::ustring words = words_for(care_for(files_));
  text_.set_text(words);
  text_.set_tooltip_text(words);  // all of it in a narrow window too
  set_visible(!files_.empty());
}

}  // namespace velkor::app
