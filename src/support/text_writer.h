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

  /** The characters of a text as "%s" prints them: up to a zero byte, "(null)" for none. */
  void add_text(const GString *text) noexcept {
    add(text == nullptr ? std::string_view("(null)") : std::string_view(text->str));
  }

  void add_number(gint64 number) noexcept {
    constexpr std::size_t max_digits = 20;
    char *start = room_for(max_digits);
    const char *const end = std::to_chars(start, start + max_digits, number).ptr;
    text_->len += static_cast<std::size_t>(end - start);
  }

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
  /** Whether there is one more tab before each. */
  bool indent = false;
  /** What fits into a line behind that tab: anything longer is cut there. */
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
    cdata_line(element, [&] { out_.add(text); });
  }

  /** The same for a text as "%s" prints it. */
  void text_line(const LineElement &element, const GString *text) noexcept {
    cdata_line(element, [&] { out_.add_text(text); });
  }

  /** A line whose content, written by `content`, stands in a CDATA section. */
  template <std::invocable Content>
  void cdata_line(const LineElement &element, Content &&content) noexcept {
    element_line(element, [&] {
      out_.add("<![CDATA[");
      content();
      out_.add("]]>");
    });
  }

private:
  template <typename Content>
  void line(Content &&content) noexcept {
    if (rule_.indent)
      out_.add("\t");
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
