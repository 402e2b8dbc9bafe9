/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Made-up postings, the same ones in every run. */
#ifndef VELKOR_BENCH_POSTING_DATA_H
#define VELKOR_BENCH_POSTING_DATA_H

#include <cstdint>
#include <random>
#include <string>

namespace velkor::bench {

/** A word that about one title in a hundred holds. */
inline constexpr const char *rare_word = "zeldzaam";

/** A tag that one posting in twenty has. */
inline constexpr const char *some_tag = "c7";

/** Postings name newsgroups with ids below this one. */
inline constexpr unsigned newsgroups = 200;

/** The id of the posting with that number, from 0. */
std::int32_t id_of(std::int64_t number);

/** When a stock of postings was made, as seen at `now`. */
struct Timeline {
  std::int64_t now = 1'300'000'000;  // seconds since 1970
  std::int32_t postings = 1;
  std::int32_t aged = 0;  // so many of the first are older than 14 days

  /** The time of the posting with that number, which rises with the number. */
  [[nodiscard]] std::int64_t stamp_of(std::int64_t number) const;
};

/** Makes postings in the form in which the cache file holds them, some 500 bytes each. */
class PostingData {
public:
  explicit PostingData(const Timeline &timeline, unsigned seed = 20080229)
      : timeline_(timeline), random_(seed) {}

  /** The posting with that number as an element. */
  std::string element(std::int64_t number);
  /** The same with a change of now. */
  std::string changed_element(std::int64_t number);
  /** The same, deleted now. */
  std::string deleted_element(std::int64_t number);
  /** The title and the stored list of tags of the last one, for other stores of the same data. */
  [[nodiscard]] const std::string &title() const { return title_; }
  [[nodiscard]] const std::string &tags() const { return tags_; }

private:
  unsigned below(unsigned bound) { return static_cast<unsigned>(random_()) % bound; }
  /** `what` with a number behind it. */
  std::string some(const char *what, unsigned bound);
  std::string words(unsigned count);
  int some_status() { return static_cast<int>(below(3)) - 1; }
  std::string make(std::int64_t number, std::int64_t updated, int status);
  std::string texts();
  std::string categories();

  Timeline timeline_;
  std::mt19937 random_;
  std::string title_;
  std::string tags_;
};

/** A whole document of that many postings. */
std::string document_of(std::int32_t count);

}  // namespace velkor::bench

#endif
