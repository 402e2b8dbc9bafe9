/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/cache_page.h"

#include "widgets/care_bar.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

Glib::ustring name_of(const CachedFile &file) {
  switch (file.kind) {
  case CacheFile::Kind::settings:
    return _("Settings");
  case CacheFile::Kind::filters:
    return _("Filters");
  case CacheFile::Kind::newsgroups:
    return _("Newsgroups");
  case CacheFile::Kind::mail:
    return _("Messages");
  case CacheFile::Kind::postings:
    return _("Spots");
  }
  return "";
}

Glib::ustring state_of(const CachedFile &file) {
  switch (file.state) {
  case CachedFile::State::sound:
    return _("in order");
  case CachedFile::State::damaged:
    return Glib::ustring::compose(_("could not be read: %1"), Glib::ustring(file.problem));
  case CachedFile::State::kept:
    return _("kept, since it could not be read or was emptied");
  }
  return "";
}

ListEntry entry_of(const CachedFile &file, std::uint64_t id) {
  return {.id = id,
          .title = name_of(file) + " — " + Glib::ustring(file.name),
          .detail = Glib::format_size(static_cast<guint64>(file.size)) + " — " +
                    moment_text(file.stamp) + " — " + state_of(file),
          .mark = file.state == CachedFile::State::damaged ? _("Damaged") : ""};
}

}  // namespace

CachePage::CachePage(Session &session)
    : Page(_("Cache files")), session_(session), fetch_button_(_("Fetch _everything again"), true),
      list_(_("Cache files")) {
  build_title_line();
  list_.set_vexpand(true);
  append(status_);
  append(list_);
}

void CachePage::build_title_line() {
  fetch_button_.set_tooltip_text(
      _("Fetch all spots from the server again, also those that are here already"));
  fetch_button_.set_action_name("win.fetch-everything");
  name_by_label_alone(fetch_button_);
  add_to_title_line(fetch_button_);
}

void CachePage::begin() {
  list_.focus_list();
  session_.look_at_files();
}

void CachePage::set_files(const std::vector<CachedFile> &files) {
  if (files == files_)
    return;
  files_ = files;
  std::vector<ListEntry> entries;
  entries.reserve(files.size());
  for (const CachedFile &file : files)
    entries.push_back(entry_of(file, entries.size() + 1));
  const Glib::ustring advice = words_for(care_for(files));
  status_.tell(advice.empty() ? _("Every file could be read.") : advice);
  list_.set_entries(entries);
  if (get_mapped())
    list_.focus_list();
}

}  // namespace velkor::app
