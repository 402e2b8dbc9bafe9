/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Invents postings that look like those of the service. */
#ifndef ZOX_SERVER_STOCK_SPOT_MAKER_H
#define ZOX_SERVER_STOCK_SPOT_MAKER_H

#include <string>
#include <vector>

#include "zox-server/stock/random.h"
#include "zox-server/store/posting.h"

namespace velkor::server {

class SpotMaker {
public:
  /** @param newsgroups the numbers of the newsgroups, a quarter of them for each main category */
  SpotMaker(Random &random, std::vector<std::int64_t> newsgroups)
      : random_(random), newsgroups_(std::move(newsgroups)) {}

  /** A posting of that age as it is at `now`, without its id. */
  Posting make(std::int64_t stamp, std::int64_t now);

private:
  void classify(Posting &posting);
  void describe(Posting &posting);
  void add_details(Posting &posting);
  void settle_state(Posting &posting, std::int64_t now);
  std::string newsgroups_of(std::int64_t category);
  std::string tags_of(std::int64_t category, std::int64_t sub_category);

  Random &random_;
  std::vector<std::int64_t> newsgroups_;
};

/** The names of the invented posters, by number from 0. */
inline constexpr std::int64_t poster_count = 432;
std::string poster_name(std::int64_t number);
/** The names of the newsgroups in the order of their numbers. */
std::vector<std::string> newsgroup_names();
std::string invent_title(Random &random, std::int64_t category);

}  // namespace velkor::server

#endif
