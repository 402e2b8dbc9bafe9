/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Random numbers that are the same for the same seed on every platform. */
#ifndef ZOX_SERVER_SAMPLE_DATA_RANDOM_H
#define ZOX_SERVER_SAMPLE_DATA_RANDOM_H

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace velkor::server {

class Random {
public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /** A number from 0 to `bound` - 1; 0 when `bound` is not positive. */
  std::int64_t below(std::int64_t bound) {
    return bound <= 0 ? 0
                      : static_cast<std::int64_t>(engine_() % static_cast<std::uint64_t>(bound));
  }
  std::int64_t between(std::int64_t first, std::int64_t last) {
    return first + below(last - first + 1);
  }
  bool chance(std::int64_t percent) { return below(100) < percent; }
  template <std::size_t size>
  std::string one_of(const std::array<std::string_view, size> &words) {
    return std::string(words[static_cast<std::size_t>(below(size))]);
  }

private:
  std::mt19937_64 engine_;
};

}  // namespace velkor::server

#endif
