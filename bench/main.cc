/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * velkor-bench measures one thing per run and prints its costs; run.py beside it makes whole series
 * and their table of these.
 *
 *     velkor-bench write DIRECTORY POSTINGS NOW     writes the documents of a stock
 *     velkor-bench CASE DIRECTORY POSTINGS NOW      measures the library with that stock
 *     velkor-bench program OUTPUT PROGRAM [ARG...]  measures a program
 */
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <stdexcept>
#include <vector>

#include "bench/cases.h"
#include "bench/measure.h"
#include "bench/program_cost.h"

namespace velkor::bench {
namespace {

using Case = void (*)(const Place &);

const std::map<std::string, Case> &cases() {
  static const std::map<std::string, Case> table{
      {"write", write_documents},    {"prepare", prepare_stock},       {"load", measure_load},
      {"save", measure_save},        {"unchanged", measure_unchanged}, {"changes", measure_changes},
      {"word", measure_word_filter}, {"tags", measure_tag_filter},     {"like", measure_like},
      {"display", measure_display},
  };
  return table;
}

long number_of(const std::string &argument, long low, long high) {
  char *end = nullptr;
  const long number = std::strtol(argument.c_str(), &end, 10);
  if (*end != '\0' || number < low || number > high)
    throw std::runtime_error("not a number from " + std::to_string(low) + " to " +
                             std::to_string(high) + ": " + argument);
  return number;
}

void run(const std::vector<std::string> &arguments) {
  if (arguments.size() >= 3 && arguments[0] == "program") {
    print_cost("program", cost_of_program({arguments.begin() + 2, arguments.end()}, arguments[1]));
    return;
  }
  if (arguments.size() != 4 || !cases().contains(arguments[0]))
    throw std::runtime_error(
        "usage: CASE DIRECTORY POSTINGS NOW | program OUTPUT PROGRAM [ARG...]");
  const auto postings = static_cast<std::int32_t>(number_of(arguments[2], 100, 10'000'000));
  const long now = number_of(arguments[3], 1'000'000'000, 2'000'000'000);
  cases().at(arguments[0])(place_of(arguments[1], postings, now));
}

}  // namespace
}  // namespace velkor::bench

int main(int count, char **arguments) {
  try {
    velkor::bench::run({arguments + 1, arguments + count});
    return 0;
  } catch (const std::exception &fault) {
    std::fprintf(stderr, "velkor-bench: %s\n", fault.what());
    return 1;
  }
}
