/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reactions of a posting as XML for the display. */
#include <velkor/zox_events_forum.h>

#include <algorithm>
#include <string>

#include <velkor/zox_string.h>

#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

/** Room in a line for what stands around the longest text. */
constexpr std::size_t line_margin = 100;

/** Appends lines, each cut where the line buffer of its reaction ends. */
class LineWriter {
public:
  LineWriter(GString *out, std::size_t buffer) noexcept : out_(out), longest_(buffer - 1) {}

  void plain(std::string_view line) noexcept {
    const std::string_view cut = line.substr(0, longest_);
    g_string_append_len(out_, cut.data(), static_cast<gssize>(cut.size()));
  }

  void element(const char *name, std::string_view content) noexcept {
    const std::string tag(name);
    plain("\t\t\t<" + tag + ">" + std::string(content) + "</" + tag + ">\n");
  }

  void number(const char *name, gint32 value) noexcept { element(name, decimal(value)); }

  void cdata(const char *name, std::string_view text) noexcept {
    element(name, "<![CDATA[" + std::string(text) + "]]>");
  }

  void date_if_any(const char *name, gint64 seconds) noexcept {
    if (seconds <= 0)
      return;
    const OwnedText date(zox_string_date(seconds));
    cdata(name, date ? date.get() : "");
  }

private:
  GString *out_;
  std::size_t longest_;
};

/** The body as it is shown: converted, or a copy when there is no converter. */
OwnedString shown_body(const ZoxReactie &reactie, ZoxTextFunc textFunc) noexcept {
  OwnedString body(reactie.body != nullptr ? copy_string(reactie.body) : g_string_new(nullptr));
  if (textFunc == nullptr)
    return body;
  OwnedString converted(textFunc(reactie.body != nullptr ? reactie.body : body.get()));
  return converted ? std::move(converted) : OwnedString(g_string_new(nullptr));
}

void print_reactie(GString *out, const ZoxReactie &reactie, ZoxTextFunc textFunc) noexcept {
  const OwnedString body = shown_body(reactie, textFunc);
  const std::size_t longest =
      std::max<std::size_t>(zox_events_forum_get_highest_length(&reactie), body->len);
  LineWriter lines(out, longest + line_margin);
  lines.plain("\t\t<Reactie>\n");
  lines.number("MessID", static_cast<gint32>(reactie.messId));
  lines.number("Kudos", static_cast<gint32>(reactie.kudos));
  lines.cdata("Author", view_of(reactie.author));
  lines.cdata("Body", view_of(body.get()));
  lines.number("Stamp", static_cast<gint32>(reactie.stamp));
  lines.date_if_any("Datum", reactie.stamp);
  lines.date_if_any("Edit", reactie.edit);
  lines.cdata("Avatar", view_of(reactie.avatar));
  lines.plain("\t\t</Reactie>\n");
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_events_forum_print(const ZoxEvent *event, ZoxTextFunc textFunc) {
  ZOX_ASSERT(event);
  ZOX_ASSERT(event->forum);
  OwnedString out(g_string_new(nullptr));
  guint32 count = 0;
  for (const ZoxReactie *reactie : Items<const ZoxReactie>(event->forum->reactions)) {
    print_reactie(out.get(), *reactie, textFunc);
    ++count;
  }
  const std::string total = "\t\t<NumReacties>" + std::to_string(count) + "</NumReacties>\n";
  g_string_append_len(out.get(), total.data(), static_cast<gssize>(total.size()));
  return out.release();
}

}  // extern "C"
