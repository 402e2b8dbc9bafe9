/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writes the lines of a posting's element. */
#ifndef VELKOR_FILTER_DISPLAY_LINES_H
#define VELKOR_FILTER_DISPLAY_LINES_H

#include <cstddef>
#include <string_view>

#include "filter/display_text.h"

namespace velkor {

/** An element that fills a line. */
struct LineElement {
  std::string_view name;
  std::size_t tabs = 2;
};

class LineWriter {
public:
  LineWriter(TextWriter &out, bool indent) noexcept : out_(out), indent_(indent) {}

  void plain_line(std::string_view text) noexcept {
    line([&] { out_.add(text); });
  }

  void number_line(const LineElement &element, gint64 number) noexcept {
    element_line(element, [&] { out_.add_number(number); });
  }

  /** A line with a text that needs no CDATA section. */
  void word_line(const LineElement &element, std::string_view word) noexcept {
    element_line(element, [&] { out_.add(word); });
  }

  /** A line with a text in a CDATA section, as it is; null is printed as a null text. */
  void text_line(const LineElement &element, const GString *text) noexcept {
    cdata_line(element, [&] { out_.add_text(text); });
  }

  /** A line whose content, written by `content`, stands in a CDATA section. */
  template <typename Content>
  void cdata_line(const LineElement &element, Content &&content) noexcept {
    element_line(element, [&] {
      out_.add("<![CDATA[");
      content();
      out_.add("]]>");
    });
  }

private:
  /** What fits into a line: anything longer is cut there. */
  static constexpr std::size_t line_limit = 65534;

  template <typename Content>
  void line(Content &&content) noexcept {
    if (indent_)
      out_.add("\t");
    const std::size_t start = out_.size();
    content();
    out_.cut(start, line_limit);
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
  const bool indent_;
};

}  // namespace velkor

#endif
