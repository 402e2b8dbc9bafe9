/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/list_saver.h"

#include <utility>

#include "library/main_loop.h"
#include "model/list_export.h"
#include "support/owned.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

PageWords page_words() {
  return {.title = _("Spots"),
          .columns = {_("Title"), _("Category"), _("Poster"), _("Date"), _("Rating"), _("Status")},
          .time_format = _("%Y-%m-%d %H:%M")};
}

/** @return why the file could not be written; empty when it was */
std::string write_file(const std::string &path, const std::string &text) {
  GError *place = nullptr;
  g_file_set_contents(path.c_str(), text.data(), static_cast<gssize>(text.size()), &place);
  const OwnedError error(place);
  return error ? error->message : "";
}

}  // namespace

ListSaver::ListSaver(Gtk::Window &window, Tell tell) : window_(window), tell_(std::move(tell)) {}

void ListSaver::ask(SharedView view) {
  chooser_ = Gtk::FileChooserNative::create(
      _("Save the list"), window_, Gtk::FileChooser::Action::SAVE, _("_Save"), _("_Cancel"));
  chooser_->set_modal(true);
  chooser_->set_current_name("spots.html");
  chooser_->signal_response().connect([this, view = std::move(view)](int response) {
    const Glib::RefPtr<Gio::File> file = chooser_->get_file();
    if (response == Gtk::ResponseType::ACCEPT && file)
      save(view, file->get_path());
  });
  chooser_->show();
}

/** A long list takes a while, and so may the disk. */
void ListSaver::save(const SharedView &view, const std::string &path) {
  thread_.post([this, view, path, words = page_words()] {
    const std::string text =
        path.ends_with(".json") ? list_as_json(*view) : list_as_html(*view, words);
    run_on_main_loop([this, path, failure = write_file(path, text)] {
      tell_(failure.empty() ? Glib::ustring::compose(_("Saved: %1"), Glib::ustring(path))
                            : Glib::ustring::compose(_("The list could not be saved: %1"),
                                                     Glib::ustring(failure)));
    });
  });
}

}  // namespace velkor::app
