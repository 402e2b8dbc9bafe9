/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl mail: private messages. */
#include <memory>
#include <set>
#include <string>

#include <velkor/zox_mail.h>

#include "support/numbers.h"
#include "support/owned_records.h"
#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/moment.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/table.h"
#include "velkorctl/text_input.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

constexpr guint32 sent = 2;

bool mail_waits() {
  guint32 waiting = 0;
  call("asking for new messages", zox_mail_check, &waiting);
  return waiting != 0;
}

const char *direction(const ZoxBericht &message) noexcept {
  return message.code == sent ? "sent" : "received";
}

/** The library keeps sent messages with the line breaks of its display document. */
std::string body_of(const ZoxBericht &message) {
  std::string body(view_of(message.body));
  for (std::size_t at = body.find("<BR />"); at != std::string::npos; at = body.find("<BR />", at))
    body.erase(at, 6);
  std::erase(body, '\r');
  return body;
}

/** A message with its number in mail list, counted from 1. */
struct Numbered {
  std::int64_t number;
  const ZoxBericht *message;
};

Fields<Numbered> message_fields() {
  using M = const Numbered &;
  return {
      {{.name = "number", .type = type::number(), .rank = 2, .place = Place::nowhere},
       [](M numbered) -> Value { return numbered.number; }},
      {{.name = "direction", .type = type::text(), .rank = 4, .place = Place::nowhere},
       [](M numbered) -> Value { return direction(*numbered.message); }},
      {{.name = "with", .type = type::text(), .rank = 1, .flexible = true},
       [](M numbered) -> Value { return numbered.message->from; }},
      {{.name = "date", .type = type::moment(), .rank = 3, .style = Style::faint},
       [](M numbered) { return moment_or_nothing(numbered.message->stamp); }},
      {{.name = "subject",
        .type = type::text(),
        .rank = 1,
        .flexible = true,
        .style = Style::strong},
       [](M numbered) -> Value { return numbered.message->subject; }},
      {{.name = "body", .type = type::text(), .place = Place::below},
       [](M numbered) -> Value { return body_of(*numbered.message); }},
  };
}

std::vector<Numbered> all_messages() {
  std::vector<Numbered> messages;
  for (const ZoxBericht *message : Items<ZoxBericht>(zox_mail_get()))
    messages.push_back({static_cast<std::int64_t>(messages.size()) + 1, message});
  return messages;
}

void print_message(const ZoxBericht &message, Output &out) {
  Table head({{""}, {""}});
  head.add({{message.code == sent ? "To" : "From"}, {std::string(view_of(message.from))}});
  head.add({{"Date"}, {show_moment(message.stamp)}});
  head.add({{"Subject"}, {std::string(view_of(message.subject))}});
  out.write(head.text({}, false) + "\n" + safe_text(body_of(message), Lines::keep) + "\n");
}

/** What checking, fetching, sending and deleting come to, one number or flag each. */
template <typename Count>
Fields<Count> outcome_fields(const char *name, const Type &type) {
  return {{{.name = name, .type = type}, [](const Count &count) -> Value { return count; }}};
}
Fields<bool> check_fields() {
  return outcome_fields<bool>("waiting", type::flag());
}
Fields<guint32> fetch_fields() {
  return outcome_fields<guint32>("received", type::number());
}
Fields<guint32> delete_fields() {
  return outcome_fields<guint32>("deleted", type::number());
}
Fields<std::string> send_fields() {
  return outcome_fields<std::string>("with", type::text());
}

/** The message with that number in mail list, counted from 1. */
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
  const bool waiting = mail_waits();
  if (wants_records(context.arguments))
    print_record(context, check_fields(), waiting);
  else
    context.out.write(waiting ? "yes\n" : "no\n");
  return Exit::ok;
}

/** The server deletes what it sends: make sure before that the file can be written. */
void require_writable_file() {
  if (zox_mail_save() != 0)
    throw Failure(Exit::files, "velkor.mail cannot be written; no message has been fetched");
}

/** The server no longer has the messages, so they are printed when the file lacks them. */
[[noreturn]] void print_unsaved(guint32 count, Output &out) {
  const guint32 first = zox_mail_get_num_messages() - count;
  for (guint32 place = first; place < first + count; ++place)
    print_message(*static_cast<const ZoxBericht *>(g_slist_nth_data(zox_mail_get(), place)), out);
  out.flush();
  throw Failure(Exit::files,
                "velkor.mail could not be written; the new messages have been printed");
}

/** How many there were. */
guint32 fetch_messages(Output &out) {
  require_writable_file();
  guint32 count = 0;
  const LibraryResult result = try_call("fetching the messages", zox_mail_fetch, &count);
  if (result.code == ZOX_RESULT_SUCCESS && zox_file_last_error()->status == ZOX_FILE_NOT_WRITTEN)
    print_unsaved(count, out);
  require_success(result);
  return count;
}

Exit run_fetch(const Context &context) {
  const CoreSession session(context.options, Access::write, Load::mail);
  session.require_account();
  const guint32 count = mail_waits() ? fetch_messages(context.out) : 0;
  if (count == 0)
    say("no new messages");
  else
    say(std::to_string(count) + (count == 1 ? " new message" : " new messages"));
  if (wants_records(context.arguments))
    print_record(context, fetch_fields(), count);
  return Exit::ok;
}

Exit run_list(const Context &context) {
  const CoreSession session(context.options, Access::read, Load::mail);
  print_records(context, message_fields(), all_messages());
  return Exit::ok;
}

Exit run_read(const Context &context) {
  const std::string number = context.arguments.required("N");
  const CoreSession session(context.options, Access::read, Load::mail);
  const ZoxBericht *message = message_numbered(number);
  if (wants_records(context.arguments)) {
    print_record(context, message_fields(), {*whole_number(number), message});
    return Exit::ok;
  }
  context.out.page();
  print_message(*message, context.out);
  return Exit::ok;
}

Exit run_send(const Context &context) {
  const std::string to = context.arguments.required("TO");
  const std::string subject = context.arguments.required("SUBJECT");
  const std::string body = read_text(context.arguments.value("--body").value_or("-"));
  const CoreSession session(context.options, Access::write, Load::mail);
  session.require_account();
  OwnedBericht message(zox_mail_bericht_new(to.c_str(), subject.c_str(), body.c_str(), 0));
  call("sending the message", zox_mail_post, message.get());
  static_cast<void>(message.release());  // the list owns it now
  say("the message has been sent");
  if (wants_records(context.arguments))
    print_record(context, send_fields(), to);
  return Exit::ok;
}

Exit run_delete(const Context &context) {
  const CoreSession session(context.options, Access::write, Load::mail);
  std::set<ZoxBericht *> seen;
  CellBuilder<ZoxBericht> messages;
  for (const std::string &number : context.arguments.values("N")) {
    ZoxBericht *message = message_numbered(number);
    if (seen.insert(message).second)
      messages.append(message);
  }
  const OwnedCells cells(messages.release());
  if (zox_mail_delete_messages(cells.get()) != 0)
    throw Failure(Exit::files, "velkor.mail cannot be written; no message has been deleted");
  if (wants_records(context.arguments))
    print_record(context, delete_fields(), static_cast<guint32>(seen.size()));
  return Exit::ok;
}

}  // namespace

std::vector<Command> mail_commands() {
  return {
      with_output(
          {"check", "Print yes or no: whether the server has new messages", {}, {}, run_check},
          one_record(check_fields())),
      with_output({"fetch", "Fetch the new messages from the server", {}, {}, run_fetch},
                  one_record(fetch_fields())),
      with_output({"list", "Print a list of the messages, oldest first", {}, {}, run_list},
                  list_of_records(message_fields(), "message", "messages")),
      with_output({"read", "Print a message", {{"N", "Its number in mail list"}}, {}, run_read},
                  one_record(message_fields())),
      with_output({"send",
                   "Send a message",
                   {{"TO", "The user to send it to"}, {"SUBJECT", "The subject"}},
                   {{"--body", "FILE", "Read the text from FILE (default: -, standard input)"}},
                   run_send},
                  one_record(send_fields())),
      with_output({"delete",
                   "Delete messages",
                   {{"N", "Their numbers in mail list", Argument::Count::some}},
                   {},
                   run_delete},
                  one_record(delete_fields())),
  };
}

}  // namespace velkor::ctl
