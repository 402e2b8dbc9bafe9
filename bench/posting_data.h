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

/** Postings name newsgroups with ids below this one. */
inline constexpr unsigned newsgroups = 200;

/** Makes postings with rising ids, in the form in which the cache file holds them. */
class PostingData {
public:
  explicit PostingData(std::int32_t first_id = 1'000'000) : id_(first_id) {}

  /** The next posting as an element of some 500 bytes. */
  std::string next_element();
  /** Its title alone, for other stores of the same data. */
  [[nodiscard]] const std::string &title() const { return title_; }

private:
  unsigned below(unsigned bound) { return static_cast<unsigned>(random_()) % bound; }
  /** `what` with a number behind it. */
  std::string some(const char *what, unsigned bound);
  std::string words(unsigned count);

  std::mt19937 random_{20080229};
  std::int32_t id_;
  std::string title_;
};

/** The stamp of the posting with that number, from 0. */
std::int64_t stamp_of(std::int64_t number);

/** A whole document of that many postings. */
std::string document_of(std::int32_t count, std::int32_t first_id = 1'000'000);

}  // namespace velkor::bench

#endif
