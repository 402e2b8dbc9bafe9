/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Measures what the user would feel: how long the main loop did nothing else than one thing, and
 * how long it took from an action until its result was painted.
 */
#ifndef VELKOR_APP_WIDGETS_HEARTBEAT_H
#define VELKOR_APP_WIDGETS_HEARTBEAT_H

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include <gtkmm.h>

namespace velkor::app {

class Heartbeat {
public:
  using Clock = std::chrono::steady_clock;

  /** @param started  when the program was started */
  explicit Heartbeat(Clock::time_point started);
  ~Heartbeat();
  Heartbeat(const Heartbeat &) = delete;
  Heartbeat &operator=(const Heartbeat &) = delete;

  /** From here on what `name` stands for is waited for; the start of the program by default. */
  void begin(const std::string &name);
  /** It will be on the screen with the next frame of `widget`; nothing unless it was begun. */
  void painted(const std::string &name, Gtk::Widget &widget);

  /** Prints what was measured on standard output, a line for each thing. */
  void print() const;

private:
  void beat();
  void note(const std::string &name, Clock::time_point since, Clock::time_point now);

  Clock::time_point latest_;
  std::map<std::string, Clock::time_point> begun_;
  std::map<std::string, std::vector<double>> taken_;  // in milliseconds
  double longest_gap_ = 0;
  sigc::connection timer_;
};

}  // namespace velkor::app

#endif
