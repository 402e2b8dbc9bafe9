/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A message as XML for the display. */
#include <velkor/zox_mail.h>

#include <velkor/zox_app_core.h>

#include "services/mail_document.h"
#include "support/assertion.h"
#include "support/owned.h"

namespace velkor {
namespace {

OwnedString shown_body(const ZoxBericht &bericht, ZoxTextFunc textFunc) noexcept {
  OwnedString body(bericht.body != nullptr ? copy_string(bericht.body) : g_string_new(nullptr));
  if (textFunc == nullptr)
    return body;
  OwnedString converted(textFunc(body.get()));
  ZOX_ASSERT_IN(zox_mail_print, converted, "parsed_tekst");
  return converted;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" ZoxString *zox_mail_print(const ZoxBericht *bericht, gpointer, ZoxTextFunc textFunc) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(bericht);
  const OwnedString body = shown_body(*bericht, textFunc);
  TextWriter out;
  append_message(out, {bericht->from, bericht->subject, body.get()}, bericht->code, bericht->stamp);
  return out.release();
}
