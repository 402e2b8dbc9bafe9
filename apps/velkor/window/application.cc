/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/application.h"

#include <csignal>
#include <cstdlib>
#include <utility>

#include <glib-unix.h>

#include "desktop/style.h"
#include "widgets/translation.h"
#include "window/shortcuts.h"

namespace velkor::app {
namespace {

/** How long what runs may take to stop; a transfer does so within a second. */
constexpr unsigned patience_ms = 2500;

gboolean on_signal(gpointer application) noexcept {
  static_cast<Application *>(application)->activate_action("quit");
  return G_SOURCE_CONTINUE;
}

}  // namespace

/** The library's own service keeps the program to one instance, not that of GTK. */
Application::Application(SessionOptions options, OwnFiles files, Instance &instance,
                         Heartbeat &heartbeat)
    : Gtk::Application("org.Velkor.Velkor", Gio::Application::Flags::NON_UNIQUE),
      options_(std::move(options)), files_(std::move(files)), instance_(instance),
      heartbeat_(heartbeat) {}

void Application::on_startup() {
  Gtk::Application::on_startup();
  apply_style();
  add_action("quit", [this] { end(); });
  add_action("about", [this] { show_about(); });
  set_accelerators(*this);
  g_unix_signal_add(SIGINT, on_signal, this);
  g_unix_signal_add(SIGTERM, on_signal, this);
}

void Application::on_activate() {
  window_ = std::make_unique<MainWindow>(options_, files_, heartbeat_);
  add_window(*window_);
  answer_others();
  window_->present();
}

void Application::answer_others() {
  instance_.answer({.bring_to_front = [this] { window_->present(); },
                    .open_posting =
                        [this](std::int32_t id) {
                          window_->present();
                          window_->open_posting(id);
                        }});
}

void Application::show_about() {
  auto *about = Gtk::make_managed<Gtk::AboutDialog>();
  about->set_transient_for(*window_);
  about->set_modal(true);
  about->set_program_name(_("Velkor"));
  about->set_version(VELKOR_VERSION);
  about->set_logo_icon_name("org.Velkor.Velkor");
  about->set_comments(_("Follow the spots of the ZOX service"));
  about->set_license_type(Gtk::License::LGPL_2_1);
  about->present();
}

/**
 * The window goes at once, the rest as soon as nothing runs any more. What does not stop in time is
 * left behind: the library's files are replaced as a whole or not at all.
 */
void Application::end() {
  if (std::exchange(ending_, true))
    return;
  Glib::signal_timeout().connect_once([] { std::_Exit(EXIT_SUCCESS); }, patience_ms);
  window_->close_session([this] { quit(); });
}

}  // namespace velkor::app
