/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/control.h"

#include <algorithm>
#include <array>

#include "zox-server/stock/stock.h"
#include "zox-server/support/json.h"
#include "zox-server/support/numbers.h"

namespace velkor::server {
namespace {

/** A command that cannot be carried out as it was given. */
class BadCommand : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

Reply json_reply(std::string document) {
  Reply reply = text_reply(std::move(document));
  reply.type = "application/json";
  return reply;
}

Reply json_error(unsigned status, const char *reason) {
  Reply reply =
      json_reply(JsonWriter().begin_object().member("error", reason).end_object().finish());
  reply.status = status;
  return reply;
}

Reply done() {
  return json_reply(JsonWriter().begin_object().member("ok", true).end_object().finish());
}

std::string needed(const Request &request, const char *name) {
  std::string value = request.value(name);
  if (value.empty())
    throw BadCommand(std::string("the parameter ") + name + " is missing");
  return value;
}

/** A number of things, 0 when the parameter is not there. */
std::int64_t counted(const Request &request, const char *name) {
  if (!request.has(name))
    return 0;
  const std::optional<std::int64_t> count = whole_number(request.value(name));
  if (!count || *count < 0)
    throw BadCommand(std::string("the parameter ") + name + " is not a count");
  return *count;
}

void write_ids(JsonWriter &json, const char *name, const std::vector<std::int64_t> &ids) {
  json.name(name).begin_array();
  for (const std::int64_t id : ids)
    json.value(id);
  json.end_array();
}

Reply status(const Controlled &controlled, const Request &) {
  Service &service = controlled.service;
  return json_reply(JsonWriter()
                        .begin_object()
                        .member("now", service.clock.now())
                        .member("postings", service.postings.count())
                        .member("waiting", service.postings.waiting())
                        .member("dumps", service.dumps.count())
                        .member("stamp", service.dumps.latest_stamp())
                        .member("newsgroups", service.groups.count())
                        .member("accounts", service.accounts.count())
                        .end_object()
                        .finish());
}

Reply advance(const Controlled &controlled, const Request &request) {
  const Change wanted{counted(request, "new"), counted(request, "updated"),
                      counted(request, "deleted"), counted(request, "removed"),
                      counted(request, "newsgroups")};
  controlled.service.clock.advance(counted(request, "seconds"));
  const Changed changed = controlled.stock.change(wanted);
  JsonWriter json;
  json.begin_object().member("stamp", changed.stamp);
  write_ids(json, "new", changed.added);
  write_ids(json, "updated", changed.updated);
  write_ids(json, "deleted", changed.deleted);
  write_ids(json, "removed", changed.removed);
  return json_reply(json.end_object().finish());
}

/** The posting to change, or a new one. */
Posting posting_of(Service &service, const Request &request) {
  if (!request.has("id"))
    return {};
  const std::optional<Posting> posting = service.postings.find(request.number("id"));
  if (!posting)
    throw BadCommand("there is no posting of that id");
  return *posting;
}

/** Fields that the service fills itself. */
bool is_own_field(const PostingField &field) {
  const std::string_view name = field.name;
  return name == "PostID" || name == "Updated";
}

Reply posting(const Controlled &controlled, const Request &request) {
  Service &service = controlled.service;
  Posting posting = posting_of(service, request);
  const std::int64_t stamp = service.change_stamp();
  if (posting.id == 0)
    posting.stamp = stamp;
  posting.updated = stamp;
  for (const Parameter &parameter : request.parameters) {
    const PostingField *field = posting_field(parameter.name);
    if (field != nullptr && !is_own_field(*field))
      set_field(posting, *field, parameter.value);
    else if (parameter.name != "id")
      throw BadCommand("a posting has no field " + parameter.name + " to be set");
  }
  if (posting.id == 0)
    posting.id = service.postings.add(posting);
  else
    service.postings.replace(posting);
  return json_reply(JsonWriter().begin_object().member("id", posting.id).end_object().finish());
}

Reply add_fault(const Controlled &controlled, const Request &request) {
  Fault fault;
  fault.path = needed(request, "path");
  fault.kind = find_fault_kind(needed(request, "kind"));
  fault.times = counted(request, "times");
  fault.argument = request.value("argument");
  if (fault.kind == nullptr)
    throw BadCommand("there is no such kind of fault");
  controlled.dispatcher.faults.add(fault);
  return done();
}

Reply list_faults(const Controlled &controlled, const Request &) {
  JsonWriter json;
  json.begin_array();
  for (const Fault &fault : controlled.dispatcher.faults.all()) {
    json.begin_object().member("path", fault.path).member("kind", fault.kind->name);
    json.member("times", fault.times).member("argument", fault.argument).end_object();
  }
  return json_reply(json.end_array().finish());
}

Reply clear_faults(const Controlled &controlled, const Request &) {
  controlled.dispatcher.faults.clear();
  return done();
}

Reply list_requests(const Controlled &controlled, const Request &) {
  return json_reply(controlled.dispatcher.log.json());
}

Reply clear_requests(const Controlled &controlled, const Request &) {
  controlled.dispatcher.log.clear();
  return done();
}

Reply account(const Controlled &controlled, const Request &request) {
  Service &service = controlled.service;
  const std::string name = needed(request, "user");
  if (name.find(':') != std::string::npos)
    throw BadCommand("a user name cannot hold a colon");
  Account account = service.accounts.find(name).value_or(Account{name, "", false});
  if (request.has("password"))
    account.password = request.value("password");
  if (request.has("banned"))
    account.banned = request.number("banned") != 0;
  service.accounts.put(account, service.clock.now());
  return done();
}

constexpr std::array commands{
    ControlCommand{"GET", "/status", "the clock and how much there is of everything", status},
    ControlCommand{"POST", "/advance",
                   "lets postings come and change: new, updated, deleted, removed, newsgroups and "
                   "seconds on the clock",
                   advance},
    ControlCommand{"POST", "/posting",
                   "adds a posting with the given fields (Title, Cat, ...), or changes that of id",
                   posting},
    ControlCommand{"POST", "/fault", "adds a fault: path, kind, times (0 for ever), argument",
                   add_fault},
    ControlCommand{"GET", "/faults", "the faults to come", list_faults},
    ControlCommand{"DELETE", "/faults", "takes all faults away", clear_faults},
    ControlCommand{"GET", "/requests", "the requests so far, without credentials", list_requests},
    ControlCommand{"DELETE", "/requests", "forgets the requests so far", clear_requests},
    ControlCommand{"POST", "/account", "adds or changes an account: user, password, banned",
                   account},
};

Reply carry_out(const Controlled &controlled, const Request &request) {
  // A page in a browser could otherwise command the server behind its user's back.
  if (request.from_browser_page)
    return json_error(403, "commands from web pages are refused");
  const auto found = std::ranges::find_if(commands, [&](const ControlCommand &command) {
    return command.path == request.path && command.method == request.method;
  });
  if (found == commands.end())
    return json_error(404, "there is no such command");
  return found->handler(controlled, request);
}

}  // namespace

std::span<const ControlCommand> control_commands() {
  return commands;
}

Reply answer_control(const Controlled &controlled, const Request &request) noexcept {
  try {
    return carry_out(controlled, request);
  } catch (const BadCommand &error) {
    return json_error(400, error.what());
  } catch (const std::exception &error) {
    return json_error(500, error.what());
  }
}

}  // namespace velkor::server
