/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Private messages: asking for them, fetching them and sending one. */
#include <velkor/zox_mail.h>

#include <ctime>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_string.h>

#include "http/service_request.h"
#include "services/mail_reply.h"
#include "services/service_steps.h"
#include "support/assertion.h"
#include "support/owned.h"

namespace velkor {
namespace {

constexpr auto addressee_unknown = static_cast<ZoxErrorCode>(ZOX_RESULT_ADDRESSEE_UNKNOWN);

ServiceReply ask(const Parameters &parameters) noexcept {
  return send_request("/3.7.3/xml-mail.php", parameters);
}

ZoxErrorCode finish_without_message(ZoxErrorCode code, char **message) noexcept {
  hand_over(message, nullptr);
  return code;
}

/** Puts messages behind those that are there. */
void add_to_box(GSList *messages) noexcept {
  core->mail = g_slist_concat(core->mail, messages);
}

}  // namespace

ZoxErrorCode request_mail(OwnedMail &messages, char **message) noexcept {
  const ServiceReply reply = ask({{"mode", "read"}});
  if (reply.failed())
    return report_failure(reply, message);
  messages = read_mail_reply(reply.text.get());
  return messages ? ZoxErrorCode{ZOX_RESULT_SUCCESS}
                  : finish_without_message(ZOX_RESULT_NOT_PARSED, message);
}

void take_mail(OwnedMail messages) noexcept {
  add_to_box(messages.release());
  // When the file could not be written, the list in memory is all there is of the new messages.
  if (zox_mail_save() == 0)
    zox_mail_load();
}

ZoxErrorCode send_mail(const ZoxBericht &bericht, char **message) noexcept {
  const ServiceReply reply = ask({{"mode", "write"},
                                  {"to", zox_string_value(bericht.from)},
                                  {"s", zox_string_value(bericht.subject)},
                                  {"b", zox_string_value(bericht.body)}});
  if (reply.failed())
    return report_failure(reply, message);
  // The word of success may stand anywhere, the other only at the beginning.
  if (reply.view().find("SENT") != std::string_view::npos)
    return ZOX_RESULT_SUCCESS;
  const bool unknown = reply.view().starts_with("NOTFOUND");
  return finish_without_message(
      unknown ? addressee_unknown : ZoxErrorCode{ZOX_RESULT_UNKNOWN_REPLY}, message);
}

void keep_sent(ZoxBericht *bericht) noexcept {
  replace_string(bericht->body, zox_string_replace(bericht->body, "\n", "\r\n<BR />"));
  bericht->stamp = std::time(nullptr);
  bericht->code = ZOX_MAIL_SENT;
  add_to_box(g_slist_prepend(nullptr, bericht));
  zox_mail_save();
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_mail_check(guint32 *mailWaiting, char **message) {
  ZOX_ASSERT(mailWaiting);
  const ServiceReply reply = ask({{"mode", "check"}});
  if (reply.failed())
    return report_failure(reply, message);
  if (!reply.view().starts_with('Y') && !reply.view().starts_with('N'))
    return finish_without_message(ZOX_RESULT_UNKNOWN_REPLY, message);
  *mailWaiting = reply.view().starts_with('Y') ? 1 : 0;
  return 0;
}

ZoxErrorCode zox_mail_fetch(guint32 *numNewMail, char **message) {
  ZOX_ASSERT(numNewMail);
  OwnedMail messages;
  if (const ZoxErrorCode code = request_mail(messages, message); code != ZOX_RESULT_SUCCESS)
    return code;
  *numNewMail = g_slist_length(messages.get());
  take_mail(std::move(messages));
  return 0;
}

ZoxErrorCode zox_mail_post(ZoxBericht *bericht, char **message) {
  ZOX_ASSERT(bericht);
  const ZoxErrorCode code = send_mail(*bericht, message);
  if (code == ZOX_RESULT_SUCCESS)
    keep_sent(bericht);
  return code;
}

}  // extern "C"
