/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What something costs: processor time, time on the clock and memory. */
#ifndef VELKOR_BENCH_MEASURE_H
#define VELKOR_BENCH_MEASURE_H

#include <string>

namespace velkor::bench {

struct Cost {
  double cpu = 0;     // seconds of processor time, user and system, of all threads
  double wall = 0;    // seconds on the clock
  double memory = 0;  // bytes by which the resident memory rose at its peak
};

/**
 * The cost of what this process does between construction and stop(). Under callgrind, only what
 * happens in between is counted; it is written as a profile with the name of the measurement.
 */
class Meter {
public:
  explicit Meter(std::string name);
  /** Prints the cost on a line of its own: name, processor time, time on the clock, memory. */
  void stop() const;

private:
  std::string name_;
  Cost before_;
};

/** Prints a cost in the form of Meter::stop(). */
void print_cost(const std::string &name, const Cost &cost);

}  // namespace velkor::bench

#endif
