/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/section_scanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <utility>
#include <variant>

#include <libxml/parserInternals.h>

#include "posting/event_fields.h"
#include "posting/event_record.h"
#include "store/event_text.h"
#include "support/xml.h"

namespace velkor {
namespace {

/** The tags of a field's element, with the blanks and the line feed around them. */
class Markup {
public:
  constexpr explicit Markup(std::string_view name) {
    add(open_, open_size_, "    <");
    add(open_, open_size_, name);
    add(open_, open_size_, ">");
    add(close_, close_size_, "</");
    add(close_, close_size_, name);
    add(close_, close_size_, ">\n");
  }

  [[nodiscard]] constexpr std::string_view open() const { return {open_.data(), open_size_}; }
  [[nodiscard]] constexpr std::string_view close() const { return {close_.data(), close_size_}; }

private:
  using Characters = std::array<char, 24>;

  static constexpr void add(Characters &characters, std::size_t &size, std::string_view text) {
    for (const char character : text)
      characters.at(size++) = character;
  }

  Characters open_{};
  Characters close_{};
  std::size_t open_size_ = 0;
  std::size_t close_size_ = 0;
};

template <std::size_t... Number>
constexpr std::array<Markup, sizeof...(Number)> markup_of(std::index_sequence<Number...>) {
  return {Markup(event_fields[Number].element)...};
}

constexpr auto markup = markup_of(std::make_index_sequence<basic_fields.size()>());
constexpr std::string_view posting_begin = "  <Event Code=\"1\">\n";
constexpr std::string_view posting_end = "  </Event>\n";

/** What the bytes of a text have in common. */
class ByteTest {
public:
  void test(char character) noexcept {
    const auto byte = static_cast<unsigned char>(character);
    control_ |= static_cast<unsigned char>((byte < 0x20) & (byte != '\n') & (byte != '\t'));
    any_ |= byte;
  }

  [[nodiscard]] bool any_control() const noexcept { return control_ != 0; }
  [[nodiscard]] bool all_ascii() const noexcept { return any_ < 0x80; }

private:
  unsigned char control_ = 0;
  unsigned char any_ = 0;
};

/**
 * Whether the text has no character that a parser refuses or changes. The inner loop has a fixed
 * length and no branch, so that compilers test many bytes at once.
 */
bool is_plain(std::string_view text) noexcept {
  constexpr std::size_t block = 64;
  ByteTest bytes;
  std::string_view rest = text;
  for (; rest.size() >= block; rest.remove_prefix(block)) {
    for (std::size_t place = 0; place < block; ++place)
      bytes.test(rest[place]);
  }
  for (const char character : rest)
    bytes.test(character);
  return !bytes.any_control() && (bytes.all_ascii() || xml::is_storable(text));
}

class Scanner {
public:
  Scanner(std::string_view text, SharedParts &parts) noexcept : rest_(text), parts_(parts) {}

  [[nodiscard]] bool at_end() const noexcept { return rest_.empty(); }

  /** Takes one posting; false when something else comes. */
  bool take_posting() noexcept {
    event_ = fresh_event;
    return take(posting_begin) && take_fields() && take(posting_end);
  }

  /** The posting taken last. */
  PackedEvent pack_posting() noexcept {
    derive_sub_category(event_);
    return pack(event_, parts_.memory());
  }

private:
  bool take_fields() noexcept {
    for (number_ = 0; number_ < basic_fields.size(); ++number_) {
      const bool present = take(markup[number_].open());
      if (!std::visit([&](auto field) { return take(field, present); }, basic_fields[number_].kind))
        return false;
    }
    return true;
  }

  bool take(NumberField field, bool present) noexcept {
    gint32 number = 0;
    if (!present || !take_number(number))
      return false;
    event_.*field.member = number;
    return true;
  }

  bool take(TimeField field, bool present) noexcept {
    gint32 number = 0;
    if (!present || !take_number(number))
      return false;
    event_.*field.member = number;
    return true;
  }

  bool take(TextField field, bool present) noexcept {
    if (!present)
      return !is_always_written(field);
    std::string_view characters;
    if (!take_cdata(characters))
      return false;
    event_.*field.member = text(field.member, characters);
    return true;
  }

  bool take(ListField field, bool present) noexcept {
    std::string_view characters;
    if (present && !take_cdata(characters))
      return false;
    event_.*field.member = present ? parts_.list(characters) : nullptr;
    return true;
  }

  static bool take(TracksField, bool) noexcept { return false; }  // never cached

  GString *text(GString *ZoxEvent::*member, std::string_view characters) noexcept {
    if (std::ranges::find(shared_text_members, member) != shared_text_members.end())
      return parts_.text(characters);
    // Only read, and only until the posting is packed.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    auto *start = const_cast<char *>(characters.data());
    texts_[number_] = GString{start, characters.size(), characters.size() + 1};
    return &texts_[number_];
  }

  bool take_number(gint32 &number) noexcept {
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    if (error != std::errc())
      return false;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return take(markup[number_].close());
  }

  bool take_cdata(std::string_view &characters) noexcept {
    constexpr std::string_view begin = "<![CDATA[";
    constexpr std::string_view end = "]]>";
    if (!take(begin))
      return false;
    const std::size_t size = rest_.find(end);
    if (size == std::string_view::npos || size > XML_MAX_TEXT_LENGTH)
      return false;
    characters = rest_.substr(0, size);
    rest_.remove_prefix(size + end.size());
    return take(markup[number_].close());
  }

  bool take(std::string_view literal) noexcept {
    if (!rest_.starts_with(literal))
      return false;
    rest_.remove_prefix(literal.size());
    return true;
  }

  std::string_view rest_;
  SharedParts &parts_;
  ZoxEvent event_ = fresh_event;
  std::size_t number_ = 0;  // of the field
  std::array<GString, basic_fields.size()> texts_{};
};

}  // namespace

std::optional<std::vector<PackedEvent>> scan_elements(std::string_view text,
                                                      SharedParts &parts) noexcept {
  if (!is_plain(text))
    return std::nullopt;
  std::vector<PackedEvent> events;
  Scanner scanner(text, parts);
  while (!scanner.at_end()) {
    if (!scanner.take_posting())
      return std::nullopt;
    events.push_back(scanner.pack_posting());
  }
  return events;
}

}  // namespace velkor
