/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/progress.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include <unistd.h>

#include "velkorctl/messages.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/terminal.h"

namespace velkor::ctl {
namespace {

constexpr int max_bar_width = 30;
constexpr auto redraw_pause = std::chrono::milliseconds(100);

/** The part of all dumps received, 0 to 1; a dump of unknown size counts once it is complete. */
double part_done(const ProgressState &state) noexcept {
  if (state.dumps == 0)
    return 0;
  const double complete = std::max(state.dump - 1, 0);
  const double current =
      state.expected > 0 ? static_cast<double>(state.received) / static_cast<double>(state.expected)
                         : 0;
  return std::clamp((complete + std::clamp(current, 0.0, 1.0)) / state.dumps, 0.0, 1.0);
}

std::string bar(double part, int cells) {
  const auto filled = static_cast<std::size_t>(part * cells);
  std::string result(static_cast<std::size_t>(cells), '.');
  std::fill_n(result.begin(), filled, '#');
  return "[" + result + "]";
}

std::string counts(const ProgressState &state) {
  if (state.dump == 0)
    return "asking what is new";
  std::string text = "dump " + std::to_string(state.dump) + "/" + std::to_string(state.dumps) +
                     "  " + show_bytes(state.total + state.received);
  if (state.rate > 0)
    text += "  " + show_bytes(static_cast<std::int64_t>(state.rate)) + "/s";
  return text;
}

void put(const std::string &text) {
  const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
  static_cast<void>(written);  // the update works without a bar
}

}  // namespace

std::string show_bytes(std::int64_t bytes) {
  static constexpr std::array<const char *, 4> units{"kB", "MB", "GB", "TB"};
  if (bytes < 1000)
    return std::to_string(bytes) + " B";
  double amount = static_cast<double>(bytes) / 1000;
  std::size_t unit = 0;
  for (; amount >= 999.95 && unit + 1 < units.size(); ++unit)
    amount /= 1000;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f %s", amount, units[unit]);
  return text.data();
}

std::string progress_line(const ProgressState &state, int width) {
  const std::string words = counts(state);
  const int cells = std::min(width - display_width(words) - 3, max_bar_width);
  if (cells < 3)
    return fit(words, width);
  return bar(part_done(state), cells) + " " + words;
}

Progress::Progress() : width_(terminal_width(STDERR_FILENO)), start_(Clock::now()) {}

Progress::~Progress() {
  erase();
}

void Progress::dump(int dumps, int number) {
  if (state_.dump > 0)
    report_dump();
  else
    start_ = Clock::now();
  state_.total += state_.received;
  state_.received = 0;
  state_.expected = 0;
  state_.dumps = dumps;
  state_.dump = number;
  draw(true);
}

void Progress::bytes(std::int64_t received, std::int64_t expected) {
  if (state_.dump == 0)
    return;
  state_.received = received;
  state_.expected = expected;
  const std::chrono::duration<double> elapsed = Clock::now() - start_;
  if (elapsed.count() > 1)
    state_.rate = static_cast<double>(state_.total + received) / elapsed.count();
  draw(false);
}

void Progress::complete() {
  if (state_.dump > 0)
    report_dump();
  state_.dump = 0;
  erase();
}

void Progress::report_dump() const {
  if (width_ == 0)
    say("dump " + std::to_string(state_.dump) + "/" + std::to_string(state_.dumps) + ": " +
        show_bytes(state_.received));
}

void Progress::draw(bool at_once) {
  const auto now = Clock::now();
  if (width_ == 0 || (!at_once && now - last_drawn_ < redraw_pause))
    return;
  put("\r\033[K" + progress_line(state_, width_ - 1));
  drawn_ = true;
  last_drawn_ = now;
}

void Progress::erase() {
  if (drawn_)
    put("\r\033[K");
  drawn_ = false;
}

}  // namespace velkor::ctl
