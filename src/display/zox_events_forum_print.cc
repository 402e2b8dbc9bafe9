/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reactions of a posting as XML for the display. */
#include <velkor/zox_events_forum.h>

#include <algorithm>

#include <velkor/zox_string.h>

#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/text_writer.h"

namespace velkor {
namespace {

/** How many bytes a line may have beyond the text of its reaction that has the most. */
constexpr std::size_t line_margin = 100;

/** The body as it is shown: converted, or a copy when there is no converter. */
OwnedString shown_body(const ZoxReactie &reactie, ZoxTextFunc textFunc) noexcept {
  OwnedString body(reactie.body != nullptr ? copy_string(reactie.body) : g_string_new(nullptr));
  if (textFunc == nullptr)
    return body;
  OwnedString converted(textFunc(reactie.body != nullptr ? reactie.body : body.get()));
  return converted ? std::move(converted) : OwnedString(g_string_new(nullptr));
}

void print_date(LineWriter &lines, const LineElement &element, gint64 seconds) noexcept {
  if (seconds <= 0)
    return;
  const OwnedText date(zox_string_date(seconds));
  lines.cdata_line(element, date ? date.get() : "");
}

/** Each line is cut where the line buffer of its reaction would end. */
void print_reactie(TextWriter &out, const ZoxReactie &reactie, ZoxTextFunc textFunc) noexcept {
  const OwnedString body = shown_body(reactie, textFunc);
  const std::size_t max_length =
      std::max<std::size_t>(zox_events_forum_get_highest_length(&reactie), body->len);
  LineWriter lines(out, {.limit = max_length + line_margin - 1});
  lines.plain_line("\t\t<Reactie>\n");
  lines.number_line({"MessID", 3}, static_cast<gint32>(reactie.messId));
  lines.number_line({"Kudos", 3}, static_cast<gint32>(reactie.kudos));
  lines.cdata_line({"Author", 3}, view_of(reactie.author));
  lines.cdata_line({"Body", 3}, view_of(body.get()));
  lines.number_line({"Stamp", 3}, static_cast<gint32>(reactie.stamp));
  print_date(lines, {"Datum", 3}, reactie.stamp);
  print_date(lines, {"Edit", 3}, reactie.edit);
  lines.cdata_line({"Avatar", 3}, view_of(reactie.avatar));
  lines.plain_line("\t\t</Reactie>\n");
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_events_forum_print(const ZoxEvent *event, ZoxTextFunc textFunc) {
  ZOX_ASSERT(event);
  ZOX_ASSERT(event->forum);
  TextWriter out;
  guint32 count = 0;
  for (const ZoxReactie *reactie : Items<const ZoxReactie>(event->forum->reactions)) {
    print_reactie(out, *reactie, textFunc);
    ++count;
  }
  LineWriter(out).number_line({"NumReacties"}, count);
  return out.release();
}

}  // extern "C"
