/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/mailbox.h"

#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>
#include <velkor/zox_mail.h>

#include "library/call.h"
#include "model/shown_text.h"
#include "support/owned_records.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::app {
namespace {

Message message_of(const ZoxBericht &bericht) {
  return {.id = zox_mail_id(&bericht),
          .sent = bericht.code == ZOX_MAIL_SENT,
          .other = shown_line(view_of(bericht.from)),
          .subject = shown_line(view_of(bericht.subject)),
          .body = plain_body(view_of(bericht.body)),
          .stamp = bericht.stamp};
}

std::string why_not_saved() {
  const ZoxFileError *outcome = zox_file_last_error();
  return outcome->status == ZOX_FILE_NOT_WRITTEN ? shown_line(outcome->message) : "";
}

/** What a request came to that has changed the list. */
MailResult saved_result() {
  return {.not_saved = why_not_saved(), .messages = read_messages()};
}

MailResult failed_result(const CallResult &result) {
  return {.failure = result.message,
          .unknown_addressee =
              result.code == static_cast<ZoxErrorCode>(ZOX_RESULT_ADDRESSEE_UNKNOWN),
          .messages = read_messages()};
}

}  // namespace

std::vector<Message> read_messages() {
  std::vector<Message> messages;
  for (const ZoxBericht *bericht : Items<ZoxBericht>(zox_mail_get()))
    messages.push_back(message_of(*bericht));
  return newest_first(std::move(messages));
}

/** The server forgets what it sends: the file must be writable before. */
MailResult fetch_messages() {
  guint32 waiting = 0;
  if (const CallResult result = call(zox_mail_check, &waiting); result.failed())
    return failed_result(result);
  if (waiting == 0)
    return {.messages = read_messages()};
  if (zox_mail_save() != 0)
    return {.failure = why_not_saved(), .messages = read_messages()};
  guint32 count = 0;
  if (const CallResult result = call(zox_mail_fetch, &count); result.failed())
    return failed_result(result);
  MailResult result = saved_result();
  result.received = count;
  return result;
}

MailResult send_message(const Draft &draft) {
  OwnedBericht bericht(
      zox_mail_bericht_new(draft.to.c_str(), draft.subject.c_str(), draft.body.c_str(), 0));
  if (const CallResult result = call(zox_mail_post, bericht.get()); result.failed())
    return failed_result(result);
  static_cast<void>(bericht.release());  // the list owns it now
  return saved_result();
}

Deletion delete_message(std::uint64_t id) {
  ZoxBericht *bericht = zox_mail_find(id);
  if (bericht == nullptr)
    return {.result = {.messages = read_messages()}};
  DeletedMessage message{.from = std::string(view_of(bericht->from)),
                         .subject = std::string(view_of(bericht->subject)),
                         .body = std::string(view_of(bericht->body)),
                         .stamp = bericht->stamp,
                         .code = bericht->code,
                         .place = g_slist_index(zox_mail_get(), bericht)};
  if (zox_mail_delete(bericht) != 0)
    return {.result = {.failure = why_not_saved(), .messages = read_messages()}};
  return {.result = {.messages = read_messages()}, .message = std::move(message)};
}

MailResult restore_message(const DeletedMessage &message) {
  ZoxBericht *bericht = zox_mail_bericht_new(message.from.c_str(), message.subject.c_str(),
                                             message.body.c_str(), message.stamp);
  bericht->code = message.code;
  core->mail = g_slist_insert(core->mail, bericht, message.place);
  zox_mail_save();
  return saved_result();
}

}  // namespace velkor::app
