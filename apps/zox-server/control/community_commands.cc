/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Commands about members and what they write. */
#include "support/json.h"
#include "support/numbers.h"
#include "zox-server/control/commands.h"

namespace velkor::server::commands {
namespace {

const ProfileField *profile_field(std::string_view name) {
  for (const ProfileField &field : profile_fields()) {
    if (name == field.name)
      return &field;
  }
  return nullptr;
}

bool is_account_parameter(std::string_view name) {
  return name == "user" || name == "password" || name == "banned";
}

void set_profile_field(Profile &profile, const Parameter &parameter) {
  const ProfileField *field = profile_field(parameter.name);
  if (field == nullptr)
    throw BadCommand("there is no profile field " + parameter.name);
  if (const auto *text = std::get_if<std::string Profile::*>(&field->member))
    profile.**text = parameter.value;
  else
    profile.*std::get<std::int64_t Profile::*>(field->member) = leading_number(parameter.value);
}

void set_profile(Service &service, const std::string &name, const Request &request) {
  Profile profile = service.accounts.profile(name).value_or(Profile());
  for (const Parameter &parameter : request.parameters) {
    if (!is_account_parameter(parameter.name))
      set_profile_field(profile, parameter);
  }
  service.accounts.set_profile(name, profile);
}

Reply id_reply(std::int64_t id) {
  return json_reply(Json().begin_object().member("id", id).end_object().pretty());
}

Reply edit_reaction(Service &service, const Request &request) {
  const std::int64_t id = request.number("id");
  if (!service.forum.edit(id, required(request, "body"), service.clock.now()))
    throw BadCommand("there is no reaction with that id");
  return id_reply(id);
}

}  // namespace

Reply account(const ControlContext &context, const Request &request) {
  Service &service = context.service;
  const std::string name = required(request, "user");
  if (name.find(':') != std::string::npos)
    throw BadCommand("a user name cannot contain a colon");
  Account account = service.accounts.find(name).value_or(Account{name, "", false});
  if (request.has("password"))
    account.password = request.value("password");
  if (request.has("banned"))
    account.banned = request.number("banned") != 0;
  Transaction transaction(service.database);
  service.accounts.put(account, service.clock.now());
  set_profile(service, name, request);
  transaction.commit();
  return ok_reply();
}

Reply message(const ControlContext &context, const Request &request) {
  Service &service = context.service;
  const std::string to = required(request, "to");
  if (!service.accounts.find(to))
    throw BadCommand("there is no account " + to);
  service.mail.put({required(request, "from"), to, request.value("subject"), request.value("body"),
                    service.clock.now()});
  return ok_reply();
}

Reply reaction(const ControlContext &context, const Request &request) {
  Service &service = context.service;
  if (request.has("id"))
    return edit_reaction(service, request);
  Reaction reaction;
  reaction.posting = request.number("posting");
  reaction.author = required(request, "user");
  reaction.body = required(request, "body");
  reaction.reply = request.number("reply");
  if (!service.postings.find(reaction.posting))
    throw BadCommand("there is no posting with that id");
  return id_reply(service.forum.add(reaction, service.clock.now()));
}

Reply withdraw_reaction(const ControlContext &context, const Request &request) {
  Service &service = context.service;
  if (!service.forum.withdraw(request.number("id"), service.clock.now()))
    throw BadCommand("there is no reaction with that id");
  return ok_reply();
}

Reply address(const ControlContext &context, const Request &request) {
  context.service.addresses.ban(required(request, "address"), request.number("banned") != 0);
  return ok_reply();
}

Reply signup_pause(const ControlContext &context, const Request &request) {
  required(request, "hours");
  context.service.settings.signup_pause_hours = count_parameter(request, "hours");
  return ok_reply();
}

}  // namespace velkor::server::commands
