/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Takes the input of a fuzz target apart. The form suits both mutation and hand-written inputs:
 * texts end at a zero byte, so that one may grow without disturbing what follows, and a digit
 * stands for its number.
 */
#ifndef VELKOR_TESTS_FUZZ_INPUT_H
#define VELKOR_TESTS_FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

namespace velkor::fuzz {

/** Behind its end an input holds zeros and empty texts. */
class Input {
public:
  Input(const std::uint8_t *data, std::size_t size)
      : rest_(reinterpret_cast<const char *>(data), size) {}

  [[nodiscard]] bool empty() const noexcept { return rest_.empty(); }

  /** A number of one byte: '0' stands for 0. */
  unsigned byte() noexcept {
    if (rest_.empty())
      return 0;
    const auto letter = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return letter ^ static_cast<unsigned>('0');
  }
  /** A number from 0 to `bound` - 1. */
  unsigned below(unsigned bound) noexcept { return byte() % bound; }
  bool flag() noexcept { return below(2) == 1; }

  /** The bytes up to the next zero byte. */
  std::string_view view() noexcept {
    const std::size_t end = std::min(rest_.find('\0'), rest_.size());
    const std::string_view text = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return text;
  }
  std::string text() { return std::string(view()); }
  /** A number as a decimal text. */
  std::int64_t number() { return std::strtoll(text().c_str(), nullptr, 10); }

  /** Everything that is left. */
  std::string_view rest() noexcept { return std::exchange(rest_, {}); }

private:
  std::string_view rest_;
};

}  // namespace velkor::fuzz

#endif
