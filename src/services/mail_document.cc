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

void append(GString *out, std::string_view text) noexcept {
  g_string_append_len(out, text.data(), static_cast<gssize>(text.size()));
}

void append_element(GString *out, std::string_view name, std::string_view content) noexcept {
  for (const std::string_view piece :
       {std::string_view("\t\t<"), name, std::string_view(">"), content, std::string_view("</"),
        name, std::string_view(">\n")})
    append(out, piece);
}

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

void append_message(GString *out, const MessageTexts &texts, guint32 code, gint64 stamp) noexcept {
  append(out, "\t<Event Code=\"" + decimal(static_cast<gint32>(code)) + "\">\n");
  append_element(out, "From", xml::cdata(view_of(texts.from)));
  append_element(out, "Subject", xml::cdata(view_of(texts.subject)));
  append_element(out, "Body", xml::cdata(view_of(texts.body)));
  append_element(out, "Stamp", decimal(static_cast<gint32>(stamp)));
  append_element(out, "DateTime", date_text(stamp));
  append(out, "\t</Event>\n");
}

OwnedString mail_document(const GSList *messages) noexcept {
  OwnedString document(g_string_new("<Mail>\n"));
  for (const ZoxBericht *bericht : Items<const ZoxBericht>(messages)) {
    const OwnedString from = storable(bericht->from);
    const OwnedString subject = storable(bericht->subject);
    const OwnedString body = storable(bericht->body);
    append_message(document.get(), {from.get(), subject.get(), body.get()}, bericht->code,
                   bericht->stamp);
  }
  append(document.get(), "</Mail>");
  return document;
}

}  // namespace velkor
