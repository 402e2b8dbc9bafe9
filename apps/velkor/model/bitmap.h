/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A set of row numbers, one bit each. */
#ifndef VELKOR_APP_MODEL_BITMAP_H
#define VELKOR_APP_MODEL_BITMAP_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velkor::app {

class Bitmap {
public:
  void insert(std::size_t row) {
    if (row / word_bits >= words_.size())
      words_.resize(row / word_bits + 1);
    words_[row / word_bits] |= std::uint64_t{1} << (row % word_bits);
  }

  [[nodiscard]] bool contains(std::size_t row) const noexcept {
    return row / word_bits < words_.size() &&
           (words_[row / word_bits] >> (row % word_bits) & 1U) != 0;
  }

private:
  static constexpr std::size_t word_bits = 64;

  std::vector<std::uint64_t> words_;
};

}  // namespace velkor::app

#endif
