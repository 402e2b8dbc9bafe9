/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/mailbox.h"

#include <memory>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>
#include <velkor/zox_mail.h>

#include "library/ask_server.h"
#include "model/shown_text.h"
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

/** The messages that wait on the server, which forgets them when it sends them. */
class MailFetch : public std::enable_shared_from_this<MailFetch> {
public:
  MailFetch(GMainContext *context, SharedCancellation wanted, MailFunction done)
      : context_(context), wanted_(std::move(wanted)), done_(std::move(done)) {}

  void start() { ask(zox_request_mail_check, &MailFetch::checked); }

private:
  void ask(const RequestStart &start, void (MailFetch::*end)(const ZoxRequest &)) {
    const auto end_here = [self = shared_from_this(), end](const ZoxRequest &request) {
      ((*self).*end)(request);
    };
    start_request(context_, *wanted_, start, {.done = unless_cancelled(end_here)});
  }

  void checked(const ZoxRequest &request) {
    if (const CallResult result = result_of(request); result.failed())
      return tell(failed_result(result));
    if (zox_request_number(&request) == 0)
      return tell({.messages = read_messages()});
    // What the server sends could not be kept if the file cannot be written.
    if (zox_mail_save() != 0)
      return tell({.failure = why_not_saved(), .messages = read_messages()});
    ask(zox_request_mail_fetch, &MailFetch::fetched);
  }

  void fetched(const ZoxRequest &request) {
    if (const CallResult outcome = result_of(request); outcome.failed())
      return tell(failed_result(outcome));
    MailResult result = saved_result();
    result.received = static_cast<std::uint32_t>(zox_request_number(&request));
    tell(std::move(result));
  }

  void tell(MailResult result) { deliver(wanted_, done_, std::move(result)); }

  GMainContext *context_;
  SharedCancellation wanted_;
  MailFunction done_;
};

}  // namespace

std::vector<Message> read_messages() {
  std::vector<Message> messages;
  for (const ZoxBericht *bericht : Items<ZoxBericht>(zox_mail_get()))
    messages.push_back(message_of(*bericht));
  return newest_first(std::move(messages));
}

SharedCancellation fetch_messages(Session &session, MailFunction done) {
  return session.run(
      [done = std::move(done)](GMainContext *context, const SharedCancellation &wanted) {
        std::make_shared<MailFetch>(context, wanted, done)->start();
      });
}

SharedCancellation send_message(Session &session, const Draft &draft, MailFunction done) {
  const auto start = [draft](const ZoxRequestOptions *options) {
    return zox_request_mail_send(draft.to.c_str(), draft.subject.c_str(), draft.body.c_str(),
                                 options);
  };
  const auto answer = [](const ZoxRequest &request) {
    const CallResult result = result_of(request);
    return result.failed() ? failed_result(result) : saved_result();
  };
  return ask_server(session, start, answer, std::move(done));
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
