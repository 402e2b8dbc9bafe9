/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "services/mail_document.h"

#include <string>

#include <velkor/zox_string.h>

#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

constexpr std::size_t max_date_length = 63;

std::string date_text(gint64 seconds) noexcept {
  const OwnedText date(zox_string_date(seconds));
  return date ? std::string(date.get()).substr(0, max_date_length) : std::string();
}

/** The text as a document can hold it. */
OwnedString storable(const GString *text) noexcept {
  const std::string kept = xml::storable(view_of(text));
  return OwnedString(g_string_new_len(kept.data(), static_cast<gssize>(kept.size())));
}

}  // namespace

void append_message(TextWriter &out, const MessageTexts &texts, guint32 code,
                    gint64 stamp) noexcept {
  LineWriter lines(out);
  lines.plain_line("\t<Event Code=\"" + decimal(static_cast<gint32>(code)) + "\">\n");
  lines.word_line({"From"}, xml::cdata(view_of(texts.from)));
  lines.word_line({"Subject"}, xml::cdata(view_of(texts.subject)));
  lines.word_line({"Body"}, xml::cdata(view_of(texts.body)));
  lines.number_line({"Stamp"}, static_cast<gint32>(stamp));
  lines.word_line({"DateTime"}, date_text(stamp));
  lines.plain_line("\t</Event>\n");
}

OwnedString mail_document(const GSList *messages) noexcept {
  TextWriter document;
  document.add("<Mail>\n");
  for (const ZoxBericht *bericht : Items<const ZoxBericht>(messages)) {
    const OwnedString from = storable(bericht->from);
    const OwnedString subject = storable(bericht->subject);
    const OwnedString body = storable(bericht->body);
    append_message(document, {from.get(), subject.get(), body.get()}, bericht->code,
                   bericht->stamp);
  }
  document.add("</Mail>");
  return OwnedString(document.release());
}

}  // namespace velkor
