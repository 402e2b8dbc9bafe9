/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The postings that a run starts with, and what changes later. */
#ifndef VELKOR_BENCH_STOCK_H
#define VELKOR_BENCH_STOCK_H

#include <cstdint>
#include <string>

#include "bench/posting_data.h"

namespace velkor::bench {

/** What one update brings. */
struct Changes {
  std::int32_t added;    // as many are too old by then
  std::int32_t changed;  // spread over the stock
  std::int32_t deleted;  // likewise
};

/** 5,000, 30 and 15 for 100,000 postings and more, in proportion for fewer. */
Changes changes_of(std::int32_t postings);

/** The files of one stock, in a directory. */
struct Place {
  std::string directory;
  Timeline timeline;

  /** The whole stock as one document. */
  [[nodiscard]] std::string document() const { return directory + "/posts.xml"; }
  /** What one update brings, as one document. */
  [[nodiscard]] std::string changes() const { return directory + "/changes.xml"; }
  /** The cache that the library made of the stock. */
  [[nodiscard]] std::string stock() const { return directory + "/stock"; }
  /** A copy of it that a case may change. */
  [[nodiscard]] std::string cache() const { return directory + "/cache"; }
};

/** The stock of that many postings in that directory, as seen at `now` (seconds since 1970). */
Place place_of(const std::string &directory, std::int32_t postings, std::int64_t now);

/** Writes both documents. @throws std::runtime_error when they cannot be written */
void write_documents(const Place &place);

}  // namespace velkor::bench

#endif
