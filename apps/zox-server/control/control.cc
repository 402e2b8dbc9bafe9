/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/control/control.h"

#include <algorithm>
#include <array>

#include "zox-server/control/commands.h"
#include "zox-server/support/json.h"
#include "zox-server/support/numbers.h"

namespace velkor::server {
namespace commands {

Reply json_reply(std::string document) {
  Reply reply = text_reply(std::move(document));
  reply.type = "application/json";
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

std::int64_t counted(const Request &request, const char *name) {
  if (!request.has(name))
    return 0;
  const std::optional<std::int64_t> count = whole_number(request.value(name));
  if (!count || *count < 0)
    throw BadCommand(std::string("the parameter ") + name + " is not a count");
  return *count;
}

}  // namespace commands

namespace {

Reply json_error(unsigned status, const char *reason) {
  Reply reply = commands::json_reply(
      JsonWriter().begin_object().member("error", reason).end_object().finish());
  reply.status = status;
  return reply;
}

struct ControlCommand {
  const char *method;
  const char *path;
  const char *description;
  Reply (*handler)(const Controlled &, const Request &);
};

Reply list_commands(const Controlled &controlled, const Request &request);

constexpr std::array all_commands{
    ControlCommand{"GET", "/commands", "this list", list_commands},
    ControlCommand{"GET", "/status", "the clock and how much there is of everything",
                   commands::status},
    ControlCommand{"POST", "/advance",
                   "lets postings come and change: new, updated, deleted, removed, newsgroups and "
                   "seconds on the clock",
                   commands::advance},
    ControlCommand{"POST", "/posting",
                   "adds a posting with the given fields (Title, Cat, ...), or changes that of id",
                   commands::posting},
    ControlCommand{"POST", "/fault", "adds a fault: path, kind, times (0 for ever), argument",
                   commands::add_fault},
    ControlCommand{"GET", "/faults", "the faults to come", commands::list_faults},
    ControlCommand{"DELETE", "/faults", "takes all faults away", commands::clear_faults},
    ControlCommand{"GET", "/requests", "the requests so far, without credentials",
                   commands::list_requests},
    ControlCommand{"DELETE", "/requests", "forgets the requests so far", commands::clear_requests},
    ControlCommand{
        "POST", "/account",
        "adds or changes an account: user, password, banned and the fields of its profile",
        commands::account},
    ControlCommand{"POST", "/message", "puts a message into the mail: to, from, subject, body",
                   commands::message},
    ControlCommand{"POST", "/reaction",
                   "lets user react to posting: body, reply; or edits the body of reaction id",
                   commands::reaction},
    ControlCommand{"DELETE", "/reaction", "withdraws the reaction of id",
                   commands::withdraw_reaction},
    ControlCommand{"POST", "/address", "bans an address from signing up: address, banned",
                   commands::address},
    ControlCommand{"POST", "/signup-pause", "sets the hours of --signup-pause: hours",
                   commands::signup_pause},
};

Reply list_commands(const Controlled &, const Request &) {
  JsonWriter json;
  json.begin_array();
  for (const ControlCommand &command : all_commands) {
    json.begin_object().member("method", command.method).member("path", command.path);
    json.member("description", command.description).end_object();
  }
  return commands::json_reply(json.end_array().finish());
}

Reply carry_out(const Controlled &controlled, const Request &request) {
  // A page in a browser could otherwise command the server behind its user's back.
  if (request.from_browser_page)
    return json_error(403, "commands from web pages are refused");
  const auto found = std::ranges::find_if(all_commands, [&](const ControlCommand &command) {
    return command.path == request.path && command.method == request.method;
  });
  if (found == all_commands.end())
    return json_error(404, "there is no such command");
  return found->handler(controlled, request);
}

}  // namespace

Reply answer_control(const Controlled &controlled, const Request &request) noexcept {
  try {
    return carry_out(controlled, request);
  } catch (const commands::BadCommand &error) {
    return json_error(400, error.what());
  } catch (const std::exception &error) {
    return json_error(500, error.what());
  }
}

}  // namespace velkor::server
