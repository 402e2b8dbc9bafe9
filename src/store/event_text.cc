/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/event_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <variant>

#include <libxml/parserInternals.h>

#include "posting/event_fields.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

/** Appends the element of one field; a text or list that is null is left out. */
class ElementWriter {
public:
  ElementWriter(std::string &text, const ZoxEvent &event) noexcept : text_(text), event_(event) {}

  void write(const EventField &field) noexcept {
    std::visit([&](auto kind) { this->add(field.element, kind); }, field.kind);
  }

private:
  void add(const char *name, NumberField field) noexcept { add_number(name, event_.*field.member); }

  void add(const char *name, TimeField field) noexcept {
    add_number(name, static_cast<gint32>(event_.*field.member));
  }

  void add(const char *name, TextField field) noexcept {
    if (const GString *text = event_.*field.member)
      add_cdata(name, view_of(text));
    else if (is_always_written(field))
      add_cdata(name, {});
  }

  void add(const char *name, ListField field) noexcept {
    if (GSList *list = event_.*field.member) {
      joined_.clear();
      for (const GString *item : Items<const GString>(list)) {
        joined_.push_back('|');
        joined_.append(view_of(item));
      }
      if (joined_.size() >= 2)
        joined_.push_back('|');
      add_cdata(name, joined_);
    }
  }

  void add(const char *, TracksField) noexcept {}  // never cached

  void add_number(const char *name, gint32 number) noexcept {
    constexpr std::size_t max_digits = 10;  // as zox_string_integer() writes it
    std::array<char, 16> digits{};
    const auto *const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    const auto count = std::min(static_cast<std::size_t>(end - digits.begin()), max_digits);
    open(name);
    text_.append(digits.data(), count);
    close(name);
  }

  void add_cdata(const char *name, std::string_view characters) noexcept {
    open(name);
    if (characters.find("]]>") == std::string_view::npos)
      text_.append("<![CDATA[").append(characters).append("]]>");
    else
      text_.append(xml::cdata(characters));
    close(name);
  }

  void open(const char *name) noexcept { text_.append("    <").append(name).append(">"); }
  void close(const char *name) noexcept { text_.append("</").append(name).append(">\n"); }

  std::string &text_;
  const ZoxEvent &event_;
  std::string joined_;
};

/** Appends what tells one value of a field from every other. */
class IdentityWriter {
public:
  IdentityWriter(ByteBuffer &bytes, const ZoxEvent &event) noexcept
      : bytes_(bytes), event_(event) {}

  void operator()(NumberField field) noexcept { add_number(event_.*field.member); }
  void operator()(TimeField field) noexcept { add_number(event_.*field.member); }
  void operator()(TextField field) noexcept { add_text(event_.*field.member); }
  void operator()(ListField field) noexcept {
    for (const GString *item : Items<const GString>(event_.*field.member))
      add_text(item);
    add_number(end_of_list);
  }
  void operator()(TracksField) noexcept {}

private:
  /* Stand where the length of a text does. */
  static constexpr gint64 no_text = -1;
  static constexpr gint64 end_of_list = -2;

  void add_number(gint64 number) noexcept { bytes_.append(&number, sizeof(number)); }

  void add_text(const GString *text) noexcept {
    add_number(text == nullptr ? no_text : static_cast<gint64>(text->len));
    if (text != nullptr)
      bytes_.append(text->str, text->len);
  }

  ByteBuffer &bytes_;
  const ZoxEvent &event_;
};

/** Adds up the characters of the texts. */
struct TextSize {
  const ZoxEvent &event;

  std::size_t operator()(TextField field) const noexcept {
    return view_of(event.*field.member).size();
  }
  std::size_t operator()(ListField field) const noexcept { return joined(event.*field.member); }
  std::size_t operator()(auto) const noexcept { return 0; }

  static std::size_t joined(const GSList *list) noexcept {
    std::size_t size = 0;
    for (const GString *item : Items<const GString>(list))
      size += item->len + 1;
    return size;
  }
};

bool is_readable(const GString *text) noexcept {
  return text == nullptr || (text->len <= XML_MAX_TEXT_LENGTH && xml::is_storable(view_of(text)));
}

/** Whether a reader takes the field back; one that it refuses would cost the whole document. */
bool is_readable(const ZoxEvent &event, const EventField &field) noexcept {
  if (const auto *text = std::get_if<TextField>(&field.kind))
    return is_readable(event.*(text->member));
  if (const auto *list = std::get_if<ListField>(&field.kind))
    return TextSize::joined(event.*(list->member)) < XML_MAX_TEXT_LENGTH &&
           std::ranges::all_of(Items<const GString>(event.*(list->member)),
                               [](const GString *item) { return is_readable(item); });
  return true;
}

}  // namespace

void append_element(std::string &text, const ZoxEvent &event) noexcept {
  text.append("  <").append(event_element).append(" Code=\"1\">\n");
  ElementWriter writer(text, event);
  for (const EventField &field : basic_fields)
    writer.write(field);
  text.append("  </").append(event_element).append(">\n");
}

std::size_t element_size(const ZoxEvent &event) noexcept {
  constexpr std::size_t markup = 360;  // tags, numbers and indentation of an ordinary posting
  std::size_t size = markup;
  for (const EventField &field : basic_fields)
    size += std::visit(TextSize{event}, field.kind);
  return size;
}

void append_identity(ByteBuffer &bytes, const ZoxEvent &event) noexcept {
  IdentityWriter writer(bytes, event);
  for (const EventField &field : basic_fields)
    std::visit(writer, field.kind);
}

const char *writing_fault(const ZoxEvent &event) noexcept {
  for (const EventField &field : basic_fields) {
    if (!is_readable(event, field))
      return field.element;
  }
  return nullptr;
}

void warn_of_unwritable(gint32 postId, const char *fault) noexcept {
  g_warning("zox_events_xml_add_basic(): posting %i kan niet geschreven worden: %s\n", postId,
            fault);
}

}  // namespace velkor
