/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What something costs: processor time and memory. The machine's load does not enter either. */
#ifndef VELKOR_BENCH_MEASURE_H
#define VELKOR_BENCH_MEASURE_H

#include <string>
#include <vector>

namespace velkor::bench {

struct Cost {
  double seconds = 0;    // of processor time, user and system
  double mebibytes = 0;  // by which the resident memory rose at its peak
};

/** The cost of what this process does between construction and stop(). */
class Meter {
public:
  Meter();
  [[nodiscard]] Cost stop() const;

private:
  double mebibytes_before_;
  double seconds_before_;
};

/** Runs a program with its output in a file; the processor time it took. Throws when it fails. */
double run_program(const std::vector<std::string> &arguments, const std::string &output);

}  // namespace velkor::bench

#endif
