/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/measure.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <utility>

#include <malloc.h>
#include <valgrind/callgrind.h>

namespace velkor::bench {
namespace {

double seconds_of(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/** A line of /proc/self/status such as "VmHWM:     1234 kB", in bytes. */
double status_bytes(const std::string &name) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(name + ":"))
      return std::strtod(line.c_str() + name.size() + 1, nullptr) * 1024;
  }
  throw std::runtime_error("no " + name + " in /proc/self/status");
}

/** From here on the peak is that of what follows. */
void forget_peak() {
  std::ofstream("/proc/self/clear_refs") << "5";
}

Cost spent(const char *memory) {
  return {seconds_of(CLOCK_PROCESS_CPUTIME_ID), seconds_of(CLOCK_MONOTONIC), status_bytes(memory)};
}

}  // namespace

Meter::Meter(std::string name) : name_(std::move(name)) {
  malloc_trim(0);  // what was freed before is nobody's gain
  forget_peak();
  before_ = spent("VmRSS");
  CALLGRIND_START_INSTRUMENTATION;
  CALLGRIND_ZERO_STATS;
}

void Meter::stop() const {
  CALLGRIND_DUMP_STATS_AT(name_.c_str());
  CALLGRIND_STOP_INSTRUMENTATION;
  const Cost after = spent("VmHWM");
  print_cost(name_,
             {after.cpu - before_.cpu, after.wall - before_.wall, after.memory - before_.memory});
}

void print_cost(const std::string &name, const Cost &cost) {
  std::printf("%s %.6f %.6f %.0f\n", name.c_str(), cost.cpu, cost.wall, cost.memory);
  std::fflush(stdout);
}

}  // namespace velkor::bench
