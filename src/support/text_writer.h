/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writes a long text, and within it elements of one line each. */
#ifndef VELKOR_SUPPORT_TEXT_WRITER_H
#define VELKOR_SUPPORT_TEXT_WRITER_H

#include <charconv>
#include <concepts>
#include <cstddef>
#include <limits>
#include <string_view>

#include "support/owned.h"

namespace velkor {

/** Writes straight into the string that is handed out in the end. */
class TextWriter {
public:
  TextWriter() = default;

  void add(std::string_view part) noexcept {
    text_->len += part.copy(room_for(part.size()), part.size());
  }

  void add_number(gint64 number) noexcept {
    put(max_digits, [number](char *start) { return put_number(start, number); });
  }

  /** Several parts as if one after the other. */
  template <typename... Parts>
  void add_all(const Parts &...parts) noexcept {
    put((std::string_view(parts).size() + ...), [&parts...](char *place) {
      ((place += std::string_view(parts).copy(place, std::string_view::npos)), ...);
      return place;
    });
  }

  /** Lets `write` fill a place of at most so many bytes; it tells where the text ends. */
  template <std::invocable<char *> Write>
  void put(std::size_t most, Write &&write) noexcept {
    char *const start = room_for(most);
    text_->len += static_cast<std::size_t>(write(start) - start);
  }

  /** The digits of a number at a place for `max_digits`; where they end. */
  static char *put_number(char *start, gint64 number) noexcept {
    if (number >= 0 && number < 10) {
      *start = static_cast<char>('0' + number);
      return start + 1;
    }
    return std::to_chars(start, start + max_digits, number).ptr;
  }
  static constexpr std::size_t max_digits = 20;

  [[nodiscard]] std::size_t size() const noexcept { return text_->len; }

  /** Cuts what was written since `start` to `limit` bytes, as a line buffer would have. */
  void cut(std::size_t start, std::size_t limit) noexcept {
    if (text_->len - start > limit)
      text_->len = start + limit;
  }

  /** The text; the writer has none any more. */
  [[nodiscard]] GString *release() noexcept {
    text_->str[text_->len] = '\0';
    return text_.release();
  }

private:
  /** Where the next bytes go; there is always space for the closing zero behind them. */
  char *room_for(std::size_t count) noexcept {
    if (text_->allocated_len - text_->len <= count) [[unlikely]]
      grow(count);
    return text_->str + text_->len;
  }

  void grow(std::size_t count) noexcept {
    const std::size_t used = text_->len;
    g_string_set_size(text_.get(), used + count);
    text_->len = used;
  }

  OwnedString text_{g_string_sized_new(4096)};
};

/** An element that fills a line. */
struct LineElement {
  std::string_view name;
  std::size_t tabs = 2;
};

/** How the lines of a document differ from those of others. */
struct LineRule {
  /** What fits into a line: anything longer is cut there. */
  std::size_t limit = std::numeric_limits<std::size_t>::max();
};

/** Writes lines, most of which are an element. */
class LineWriter {
public:
  explicit LineWriter(TextWriter &out, const LineRule &rule = {}) noexcept
      : out_(out), rule_(rule) {}

  void plain_line(std::string_view text) noexcept {
    line([&] { out_.add(text); });
  }

  void number_line(const LineElement &element, gint64 number) noexcept {
    element_line(element, [&] { out_.add_number(number); });
  }

  /** A line whose content needs no CDATA section. */
  void word_line(const LineElement &element, std::string_view word) noexcept {
    element_line(element, [&] { out_.add(word); });
  }

  /** A line with a text in a CDATA section, as it is. */
  void cdata_line(const LineElement &element, std::string_view text) noexcept {
    element_line(element, [&] { out_.add_all("<![CDATA[", text, "]]>"); });
  }

private:
  template <typename Content>
  void line(Content &&content) noexcept {
    const std::size_t start = out_.size();
    content();
    out_.cut(start, rule_.limit);
  }

  template <typename Content>
  void element_line(const LineElement &element, Content &&content) noexcept {
    line([&] {
      out_.add(std::string_view("\t\t\t").substr(0, element.tabs));
      out_.add("<");
      out_.add(element.name);
      out_.add(">");
      content();
      out_.add("</");
      out_.add(element.name);
      out_.add(">\n");
    });
  }

  TextWriter &out_;
  const LineRule rule_;
};

}  // namespace velkor

#endif
