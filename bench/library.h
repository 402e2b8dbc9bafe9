/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The library in a directory of its own, without start-up. */
#ifndef VELKOR_BENCH_LIBRARY_H
#define VELKOR_BENCH_LIBRARY_H

#include <string>

#include "support/opened_core.h"

namespace velkor::bench {

/** @throws std::runtime_error with that text unless the condition holds */
void expect(bool condition, const char *text);

/** A core with default settings, the default filters and an empty event list, while it lives. */
class Library {
public:
  explicit Library(const std::string &cache_directory);

private:
  OpenedCore core_;
};

/** Loads the event list from the cache; throws when that fails. */
void load_list();

/** Saves the event list to the cache; throws when that fails. */
void save_list();

/** The number of postings in the list. */
unsigned count_postings();

}  // namespace velkor::bench

#endif
