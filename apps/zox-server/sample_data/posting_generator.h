/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Generates postings that look like those of the service. */
#ifndef ZOX_SERVER_SAMPLE_DATA_POSTING_GENERATOR_H
#define ZOX_SERVER_SAMPLE_DATA_POSTING_GENERATOR_H

#include <string>
#include <vector>

#include "zox-server/sample_data/random.h"
#include "zox-server/store/posting.h"

namespace velkor::server {

class PostingGenerator {
public:
  /** @param newsgroups the newsgroup numbers, a quarter of them for each main category */
  PostingGenerator(Random &random, std::vector<std::int64_t> newsgroups)
      : random_(random), newsgroups_(std::move(newsgroups)) {}

  /** A posting made at `stamp`, in its state at `now`, without an id. */
  Posting generate(std::int64_t stamp, std::int64_t now);

private:
  void classify(Posting &posting);
  void describe(Posting &posting);
  void add_details(Posting &posting);
  void set_state(Posting &posting, std::int64_t now);
  std::string newsgroups_of(std::int64_t category);
  std::string tags_of(std::int64_t category, std::int64_t sub_category);

  Random &random_;
  std::vector<std::int64_t> newsgroups_;
};

/** How many posters are generated; they are numbered from 0. */
inline constexpr std::int64_t poster_count = 432;
std::string poster_name(std::int64_t number);
/** The names of the newsgroups, ordered by number. */
std::vector<std::string> newsgroup_names();
std::string generate_title(Random &random, std::int64_t category);

}  // namespace velkor::server

#endif
