/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The cost of another program. */
#ifndef VELKOR_BENCH_PROGRAM_COST_H
#define VELKOR_BENCH_PROGRAM_COST_H

#include <string>
#include <vector>

#include "bench/measure.h"

namespace velkor::bench {

/**
 * Runs a program to its end with its output in a file. Its memory is its own peak, as long as this
 * process stays smaller.
 * @throws std::runtime_error when it cannot be started or fails
 */
Cost cost_of_program(const std::vector<std::string> &arguments, const std::string &output);

}  // namespace velkor::bench

#endif
