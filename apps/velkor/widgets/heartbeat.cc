/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/heartbeat.h"

#include <algorithm>
#include <cstdio>

namespace velkor::app {
namespace {

constexpr unsigned interval_ms = 5;

double milliseconds(Heartbeat::Clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

}  // namespace

Heartbeat::Heartbeat(Clock::time_point started) : latest_(started) {
  for (const char *name : {"window", "list"})
    begun_[name] = started;
  timer_ = Glib::signal_timeout().connect(
      [this] {
        beat();
        return true;
      },
      interval_ms, Glib::PRIORITY_HIGH);
}

Heartbeat::~Heartbeat() {
  timer_.disconnect();
}

void Heartbeat::begin(const std::string &name) {
  begun_[name] = Clock::now();
}

void Heartbeat::painted(const std::string &name, Gtk::Widget &widget) {
  const auto place = begun_.find(name);
  if (place == begun_.end())
    return;
  const Clock::time_point since = place->second;
  begun_.erase(place);
  // The callback of the frame after this one: then this one is on the screen.
  int frame = 0;
  widget.add_tick_callback([=, this](const Glib::RefPtr<Gdk::FrameClock> & /*clock*/) mutable {
    if (frame++ == 0)
      return true;
    note(name, since, Clock::now());
    return false;
  });
}

void Heartbeat::beat() {
  const Clock::time_point now = Clock::now();
  longest_gap_ = std::max(longest_gap_, milliseconds(now - latest_) - interval_ms);
  latest_ = now;
}

void Heartbeat::note(const std::string &name, Clock::time_point since, Clock::time_point now) {
  taken_[name].push_back(milliseconds(now - since));
}

void Heartbeat::print() const {
  std::printf("heartbeat: longest gap %.0f ms\n", longest_gap_);
  for (const auto &[name, times] : taken_)
    std::printf("heartbeat: %s painted after %.0f ms at most, %zu times\n", name.c_str(),
                *std::ranges::max_element(times), times.size());
  std::fflush(stdout);
}

}  // namespace velkor::app
