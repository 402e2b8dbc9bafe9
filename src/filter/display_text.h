/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writes a long text, straight into the string that is handed out in the end. */
#ifndef VELKOR_FILTER_DISPLAY_TEXT_H
#define VELKOR_FILTER_DISPLAY_TEXT_H

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "support/owned.h"

namespace velkor {

class TextWriter {
public:
  TextWriter() = default;

  void add(std::string_view part) noexcept {
    std::memcpy(room_for(part.size()), part.data(), part.size());
    text_->len += part.size();
  }

  /** The characters of a text as "%s" prints them: up to a zero byte, "(null)" for none. */
  void add_text(const GString *text) noexcept {
    add(text == nullptr ? std::string_view("(null)") : std::string_view(text->str));
  }

  void add_number(gint64 number) noexcept {
    constexpr std::size_t longest = 20;
    char *start = room_for(longest);
    const char *const end = std::to_chars(start, start + longest, number).ptr;
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
  /** Where the next bytes go; there is always room for the closing zero behind them. */
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

}  // namespace velkor

#endif
