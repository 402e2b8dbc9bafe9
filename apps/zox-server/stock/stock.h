/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Fills the service with an invented stock and lets it live on. */
#ifndef ZOX_SERVER_STOCK_STOCK_H
#define ZOX_SERVER_STOCK_STOCK_H

#include <vector>

#include "zox-server/service.h"
#include "zox-server/stock/spot_maker.h"

namespace velkor::server {

/** How many postings change in which way. */
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

class Stock {
public:
  Stock(Service &service, std::uint64_t seed);

  /**
   * Adds newsgroups, posters and `count` postings of the last weeks with their reactions; a few
   * postings are by the members who can log in.
   */
  void fill(std::int64_t count);
  /** Everything changes now, in one step; as many postings as there are at most. */
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
  void take_away(std::int64_t id, PostingState state, std::int64_t stamp);

  Service &service_;
  Random random_;
};

}  // namespace velkor::server

#endif
