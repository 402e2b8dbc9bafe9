/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Fills the service with generated sample data and simulates later changes. */
#ifndef ZOX_SERVER_SAMPLE_DATA_SAMPLE_DATA_H
#define ZOX_SERVER_SAMPLE_DATA_SAMPLE_DATA_H

#include <vector>

#include "zox-server/sample_data/posting_generator.h"
#include "zox-server/service.h"

namespace velkor::server {

/** How many postings and newsgroups to add or change. */
struct Change {
  std::int64_t added = 0;
  std::int64_t updated = 0;
  std::int64_t deleted = 0;
  std::int64_t removed = 0;
  std::int64_t newsgroups = 0;
};

/** The ids of the postings that changed. */
struct Changed {
  std::vector<std::int64_t> added;
  std::vector<std::int64_t> updated;
  std::vector<std::int64_t> deleted;
  std::vector<std::int64_t> removed;
  std::int64_t stamp = 0;
};

class SampleData {
public:
  SampleData(Service &service, std::uint64_t seed);

  /**
   * Adds newsgroups, posters and `count` postings of the last weeks with their reactions; a few
   * postings are by members who can log in.
   */
  void fill(std::int64_t count);
  /** Makes all changes now, in one transaction; limited by the number of live postings. */
  Changed change(const Change &wanted);

private:
  void add_newsgroups();
  void add_posters();
  void add_postings(std::int64_t count);
  void add_reactions(std::int64_t posting, std::int64_t since, std::int64_t now);
  std::vector<std::int64_t> newsgroup_numbers();
  std::vector<std::int64_t> draw(std::vector<std::int64_t> &live, std::int64_t count);
  std::vector<std::int64_t> add_spots(std::int64_t count, std::int64_t stamp);
  void update(std::int64_t id, std::int64_t stamp);
  void withdraw(std::int64_t id, PostingState state, std::int64_t stamp);

  Service &service_;
  Random random_;
};

}  // namespace velkor::server

#endif
