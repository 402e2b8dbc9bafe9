/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What velkor-bench measures, each case in a process of its own. */
#ifndef VELKOR_BENCH_CASES_H
#define VELKOR_BENCH_CASES_H

#include <cstdint>
#include <string>

#include "bench/measure.h"

namespace velkor::bench {

/** The directory of one run with that many postings in the cache. */
struct Place {
  std::string directory;
  std::int32_t postings;

  [[nodiscard]] std::string document() const { return directory + "/posts.xml"; }
  [[nodiscard]] std::string cache() const { return directory + "/cache"; }
  [[nodiscard]] std::string cache_file() const { return cache() + "/velkor.posts.gz"; }
};

/** Runs the case of that name in this process; throws for an unknown one or when it fails. */
Cost run_case(const std::string &name, const Place &place);

}  // namespace velkor::bench

#endif
