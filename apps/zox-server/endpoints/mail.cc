/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Private mail: check, read and write. */
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

enum Code { code_nothing = 0, code_received = 1 };

Reply check(Service &service, const Account &account) {
  return text_reply(service.mail.has_waiting(account.name) ? word::mail_waiting : word::no_mail);
}

void write_message(XmlWriter &xml, const Message &message) {
  xml.open_event(code_received);
  xml.element("From", message.from);
  xml.element("Subject", message.subject);
  xml.element("Body", message.body);
  xml.element("Stamp", message.stamp);
  xml.close();
}

/** Delivers the waiting messages and deletes them. */
Reply read(Service &service, const Account &account) {
  XmlWriter xml("Mail");
  const std::vector<Message> messages = service.mail.take(account.name);
  for (const Message &message : messages)
    write_message(xml, message);
  if (messages.empty()) {
    xml.open_event(code_nothing);
    xml.close();
  }
  return xml_reply(xml.finish());
}

Reply write(Service &service, const Request &request, const Account &account) {
  const std::optional<Account> recipient = service.accounts.find(request.value("to"));
  if (!recipient)
    return text_reply(word::not_found);
  service.mail.put(
      {account.name, recipient->name, request.value("s"), request.value("b"), service.clock.now()});
  return text_reply(word::sent);
}

}  // namespace

Reply mail(Service &service, const Request &request, const Account &account) {
  const std::string mode = request.value("mode");
  if (mode == "check")
    return check(service, account);
  if (mode == "read")
    return read(service, account);
  return mode == "write" ? write(service, request, account) : text_reply(word::failed);
}

}  // namespace velkor::server::endpoints
