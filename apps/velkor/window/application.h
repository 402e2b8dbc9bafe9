/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The program from its first window to its end. */
#ifndef VELKOR_APP_WINDOW_APPLICATION_H
#define VELKOR_APP_WINDOW_APPLICATION_H

#include <memory>

#include <gtkmm.h>

#include "library/instance.h"
#include "library/session.h"
#include "model/own_files.h"
#include "widgets/heartbeat.h"
#include "window/main_window.h"

namespace velkor::app {

class Application : public Gtk::Application {
public:
  Application(SessionOptions options, OwnFiles files, Instance &instance, Heartbeat &heartbeat);

protected:
  void on_startup() override;
  void on_activate() override;

private:
  void show_about();
  void end();
  void answer_others();

  SessionOptions options_;
  OwnFiles files_;
  Instance &instance_;
  Heartbeat &heartbeat_;
  std::unique_ptr<MainWindow> window_;
  bool ending_ = false;
};

}  // namespace velkor::app

#endif
