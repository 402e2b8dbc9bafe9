/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Shows the progress of an update: a bar on a terminal, a line per dump elsewhere. */
#ifndef VELKORCTL_PROGRESS_H
#define VELKORCTL_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <string>

namespace velkor::ctl {

struct ProgressState {
  int dumps = 0;
  /** The number of the current dump, from 1; 0 while the server is asked what is new. */
  int dump = 0;
  std::int64_t received = 0;
  /** The size of the current dump in bytes, 0 while unknown. */
  std::int64_t expected = 0;
  /** The bytes of the dumps before it. */
  std::int64_t total = 0;
  /** Bytes per second, 0 while unknown. */
  double rate = 0;
};

/** "1.4 MB" */
std::string show_bytes(std::int64_t bytes);

/** The line with the bar, at most `width` cells. */
std::string progress_line(const ProgressState &state, int width);

class Progress {
public:
  /** Writes to standard error. */
  Progress();
  /** Removes the bar. */
  ~Progress();
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  /** Dump `number` of `dumps` starts; both are 0 while the server is asked what is new. */
  void dump(int dumps, int number);
  void bytes(std::int64_t received, std::int64_t expected);
  /** All dumps have been received. */
  void complete();

private:
  using Clock = std::chrono::steady_clock;

  void report_dump() const;
  void draw(bool at_once);
  void erase();

  int width_;
  bool drawn_ = false;
  ProgressState state_;
  Clock::time_point start_;
  Clock::time_point last_drawn_;
};

}  // namespace velkor::ctl

#endif
