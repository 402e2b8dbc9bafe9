/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl mail: private messages. */
#include <algorithm>
#include <memory>
#include <string>

#include <velkor/zox_mail.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/file_stamp.h"
#include "velkorctl/formats.h"
#include "velkorctl/json.h"
#include "velkorctl/messages.h"
#include "velkorctl/moment.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/text_input.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;
using OwnedMessage = std::unique_ptr<ZoxBericht, ReleaseWith<zox_mail_bericht_free>>;

constexpr guint32 sent = 2;

bool mail_waits() {
  guint32 waiting = 0;
  char *place = nullptr;
  const ZoxErrorCode result = zox_mail_check(&waiting, &place);
  require_success(result, OwnedText(place));
  return waiting != 0;
}

const char *direction(const ZoxBericht &message) noexcept {
  return message.code == sent ? "sent" : "received";
}

/** Sent messages are kept with the line ends that the display wants. */
std::string body_of(const ZoxBericht &message) {
  std::string body(view_of(message.body));
  for (std::size_t at = body.find("<BR />"); at != std::string::npos; at = body.find("<BR />", at))
    body.erase(at, 6);
  body.erase(std::remove(body.begin(), body.end(), '\r'), body.end());
  return body;
}

void print_message(const ZoxBericht &message, Output &out) {
  Table head({{""}, {""}});
  head.add({message.code == sent ? "To" : "From", std::string(view_of(message.from))});
  head.add({"Date", show_moment(message.stamp)});
  head.add({"Subject", std::string(view_of(message.subject))});
  out.write(head.text(0, false) + "\n" + safe_text(body_of(message), Lines::keep) + "\n");
}

/** The message of that number, from 1 on in the order of mail list. */
ZoxBericht *message_numbered(const std::string &text) {
  const std::int64_t count = zox_mail_get_num_messages();
  const std::int64_t number = number_in_range(text, 1, G_MAXINT32, "N");
  if (number > count)
    throw Failure(Exit::not_found, "there is no message " + text);
  return static_cast<ZoxBericht *>(
      g_slist_nth_data(zox_mail_get(), static_cast<guint>(number - 1)));
}

Exit run_check(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::settings);
  session.require_account();
  context.out.write(mail_waits() ? "yes\n" : "no\n");
  return Exit::ok;
}

/** The server forgets what it hands out: the file must be writable before that. */
void require_writable_box() {
  if (zox_mail_save() != 0)
    throw Failure(Exit::files, "velkor.mail cannot be written; no message is fetched");
}

/** Whatever happened to the file meanwhile, a message that the server gave away is not lost. */
void rescue(guint32 count, Output &out) {
  const guint32 first = zox_mail_get_num_messages() - count;
  for (guint32 place = first; place < first + count; ++place)
    print_message(*static_cast<const ZoxBericht *>(g_slist_nth_data(zox_mail_get(), place)), out);
  out.flush();
  throw Failure(Exit::files, "velkor.mail could not be written; the new messages are printed");
}

Exit run_fetch(const Context &context) {
  const CoreSession session(context.options, Access::write, Load::mail);
  session.require_account();
  if (!mail_waits()) {
    say("no new messages");
    return Exit::ok;
  }
  require_writable_box();
  const std::filesystem::path file = session.directory() / "velkor.mail";
  const FileStamp before(file);
  guint32 count = 0;
  char *place = nullptr;
  const ZoxErrorCode result = zox_mail_fetch(&count, &place);
  require_success(result, OwnedText(place));
  if (FileStamp(file) == before)
    rescue(count, context.out);
  say(std::to_string(count) + (count == 1 ? " new message" : " new messages"));
  return Exit::ok;
}

void print_table(const Context &context) {
  using Align = Column::Align;
  Table table({{"#", Align::right}, {"KIND"}, {"WITH"}, {"DATE"}, {"SUBJECT", Align::left, true}});
  int number = 0;
  for (const ZoxBericht *message : Items<ZoxBericht>(zox_mail_get()))
    table.add({std::to_string(++number), direction(*message), std::string(view_of(message->from)),
               show_moment(message->stamp), std::string(view_of(message->subject))});
  print(table, context);
}

void add_message(Json &json, const ZoxBericht &message, int number) {
  json.begin_object().number("number", number).text("direction", direction(message));
  json.text("with", message.from).number("stamp", message.stamp);
  json.text("date", show_moment(message.stamp)).text("subject", message.subject);
  json.text("body", body_of(message)).end_object();
}

void print_json(Output &out) {
  JsonLines lines(out);
  int number = 0;
  for (const ZoxBericht *message : Items<ZoxBericht>(zox_mail_get())) {
    Json json;
    add_message(json, *message, ++number);
    lines.add(json);
  }
  lines.finish();
}

Exit run_list(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::mail);
  if (wants_json(context.arguments))
    print_json(context.out);
  else
    print_table(context);
  return Exit::ok;
}

Exit run_read(const Context &context) {
  const std::string number = context.arguments.required("N");
  const CoreSession session(context.options, Access::read, Load::mail);
  print_message(*message_numbered(number), context.out);
  return Exit::ok;
}

Exit run_send(const Context &context) {
  const std::string to = context.arguments.required("TO");
  const std::string subject = context.arguments.required("SUBJECT");
  const std::string body = read_text(context.arguments.value("--body").value_or("-"));
  const CoreSession session(context.options, Access::write, Load::mail);
  session.require_account();
  OwnedMessage message(zox_mail_bericht_new(to.c_str(), subject.c_str(), body.c_str(), 0));
  char *place = nullptr;
  const ZoxErrorCode result = zox_mail_post(message.get(), &place);
  require_success(result, OwnedText(place));
  static_cast<void>(message.release());  // the list has it now
  say("the message is sent");
  return Exit::ok;
}

Exit run_delete(const Context &context) {
  const CoreSession session(context.options, Access::write, Load::mail);
  std::vector<ZoxBericht *> messages;
  for (const std::string &number : context.arguments.values("N")) {
    ZoxBericht *message = message_numbered(number);
    if (std::find(messages.begin(), messages.end(), message) == messages.end())
      messages.push_back(message);
  }
  for (ZoxBericht *message : messages)
    if (zox_mail_delete(message) != 0)
      throw Failure(Exit::files, "velkor.mail cannot be written");
  return Exit::ok;
}

}  // namespace

Command mail_check_command() {
  return {"mail check", "Print whether messages wait on the server: yes or no", {}, {}, run_check};
}

Command mail_fetch_command() {
  return {"mail fetch", "Fetch the messages that wait on the server", {}, {}, run_fetch};
}

Command mail_list_command() {
  return {"mail list",
          "Print the messages kept, the oldest first",
          {},
          with_format_options({}),
          run_list};
}

Command mail_read_command() {
  return {"mail read", "Print a message", {{"N", "Its number in mail list"}}, {}, run_read};
}

Command mail_send_command() {
  return {"mail send",
          "Send a message",
          {{"TO", "The user that it is for"}, {"SUBJECT", "What it is about"}},
          {{"--body", "FILE", "The file with its text (default: - for standard input)"}},
          run_send};
}

Command mail_delete_command() {
  return {"mail delete",
          "Delete messages that are kept",
          {{"N", "Their numbers in mail list", Argument::Count::some}},
          {},
          run_delete};
}

}  // namespace velkor::ctl
