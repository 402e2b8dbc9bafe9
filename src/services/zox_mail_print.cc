/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Messages as XML, for the display and for the mail file. */
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_string.h>

#include "services/mail_document.h"
#include "services/service_request.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

/** The longest date text that is printed. */
constexpr std::size_t longest_date = 63;
constexpr std::string_view cdata_begin = "<![CDATA[";
constexpr std::string_view cdata_end = "]]>";

void append(GString *out, std::string_view text) noexcept {
  g_string_append_len(out, text.data(), static_cast<gssize>(text.size()));
}

void append_element(GString *out, const char *name, std::string_view content) noexcept {
  const std::string tag(name);
  append(out, "\t\t<" + tag + ">");
  append(out, content);
  append(out, "</" + tag + ">\n");
}

/** One CDATA section, or several where the text holds the mark that ends one. */
std::string cdata(std::string_view text) noexcept {
  std::string content = xml::storable(text);
  for (std::size_t mark = content.find(cdata_end); mark != std::string::npos;
       mark = content.find(cdata_end, mark)) {
    // The new end stands between the second bracket and the ">" of the mark.
    const std::string split = std::string(cdata_end) + std::string(cdata_begin);
    content.insert(mark + 2, split);
    mark += 2 + split.size();
  }
  return std::string(cdata_begin) + content + std::string(cdata_end);
}

OwnedString shown_body(const ZoxBericht &bericht, ZoxTextFunc textFunc) noexcept {
  OwnedString body(bericht.body != nullptr ? copy_string(bericht.body) : g_string_new(nullptr));
  if (textFunc == nullptr)
    return body;
  OwnedString converted(textFunc(body.get()));
  ZOX_ASSERT_AS(converted, "parsed_tekst");
  return converted;
}

std::string date_text(gint64 seconds) noexcept {
  const OwnedText date(zox_string_date(seconds));
  return date ? std::string(date.get()).substr(0, longest_date) : std::string();
}

}  // namespace

OwnedString mail_document(const GSList *messages) noexcept {
  OwnedString document(g_string_new("<Mail>\n"));
  for (const ZoxBericht *bericht : Items<const ZoxBericht>(messages)) {
    const OwnedString block(zox_mail_print(bericht, nullptr, nullptr));
    append(document.get(), view_of(block.get()));
  }
  append(document.get(), "</Mail>");
  return document;
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_mail_print(const ZoxBericht *bericht, gpointer, ZoxTextFunc textFunc) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(bericht);
  const OwnedString body = shown_body(*bericht, textFunc);
  OwnedString out(g_string_new(nullptr));
  append(out.get(), "\t<Event Code=\"" + decimal(static_cast<gint32>(bericht->code)) + "\">\n");
  append_element(out.get(), "From", cdata(view_of(bericht->from)));
  append_element(out.get(), "Subject", cdata(view_of(bericht->subject)));
  append_element(out.get(), "Body", cdata(view_of(body.get())));
  append_element(out.get(), "Stamp", decimal(static_cast<gint32>(bericht->stamp)));
  append_element(out.get(), "DateTime", date_text(bericht->stamp));
  append(out.get(), "\t</Event>\n");
  return out.release();
}

}  // extern "C"
