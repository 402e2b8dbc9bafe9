/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One search text, prepared for whoever looks for it in one text after the other. */
#ifndef VELKOR_FILTER_TEXT_SEARCH_H
#define VELKOR_FILTER_TEXT_SEARCH_H

#include <string_view>

namespace velkor {

/** Finds what contains_ignoring_case() finds. The search text stays the caller's. */
class TextSearch {
public:
  explicit TextSearch(std::string_view needle) noexcept;

  [[nodiscard]] bool occurs_in(std::string_view text) const noexcept;

private:
  /** A letter in either case, as `(byte | fold) == lower`; some other bytes pass as well. */
  struct Letter {
    unsigned char fold = 0;
    unsigned char lower = 0;
  };

  [[nodiscard]] bool occurs_in_block(const char *bytes, std::string_view text,
                                     std::size_t place) const noexcept;
  [[nodiscard]] bool stands_at(std::string_view text, std::size_t place) const noexcept;
  static Letter letter_of(char character) noexcept;

  std::string_view needle_;
  Letter first_;
  Letter second_;
};

}  // namespace velkor

#endif
