/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What stands before and behind the content of an element that fills a line. */
#ifndef VELKOR_DISPLAY_LINE_PATTERN_H
#define VELKOR_DISPLAY_LINE_PATTERN_H

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace velkor {

/**
 * Both parts as they stand in the text, put together at compile time. They are copied with their
 * padding, since a copy of a fixed size takes no call.
 */
class LinePattern {
public:
  /** A line with a number or a word. */
  static constexpr LinePattern plain(std::string_view name, std::size_t tabs = 2) noexcept {
    LinePattern pattern;
    pattern.opening_.add("\t\t\t\t", tabs + 1).add("<").add(name).add(">");
    pattern.closing_.add("</").add(name).add(">\n");
    return pattern;
  }
  /** A line with a text in a CDATA section. */
  static constexpr LinePattern cdata(std::string_view name, std::size_t tabs = 2) noexcept {
    LinePattern pattern;
    pattern.opening_.add("\t\t\t\t", tabs + 1).add("<").add(name).add("><![CDATA[");
    pattern.closing_.add("]]></").add(name).add(">\n");
    return pattern;
  }

  /** So many bytes are written by open() or close() at most, padding included. */
  static constexpr std::size_t room = 40;

  /** Writes what stands before the content, with one tab more if it is indented. */
  [[nodiscard]] char *open(char *place, bool indent) const noexcept {
    const std::size_t skipped = indent ? 0 : 1;
    std::memcpy(place, opening_.text.data() + skipped, room);
    return place + opening_.size - skipped;
  }
  /** Writes what stands behind the content. */
  [[nodiscard]] char *close(char *place) const noexcept {
    std::memcpy(place, closing_.text.data(), room);
    return place + closing_.size;
  }

private:
  struct Part {
    std::array<char, room + 1> text{};
    std::size_t size = 0;

    constexpr Part &add(std::string_view piece, std::size_t count = std::string_view::npos) {
      for (const char character : piece.substr(0, count))
        text.at(size++) = character;
      return *this;
    }
  };

  constexpr LinePattern() noexcept = default;

  Part opening_;
  Part closing_;
};

}  // namespace velkor

#endif
