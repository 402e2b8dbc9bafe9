/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/control/control.h"

#include <algorithm>
#include <array>

#include "support/json.h"
#include "support/numbers.h"
#include "zox-server/control/commands.h"

namespace velkor::server {
namespace commands {
namespace {

/** No sensible command needs more, and times computed with it cannot overflow. */
constexpr std::int64_t max_count = 1'000'000'000;

}  // namespace

Reply json_reply(std::string document) {
  Reply reply = text_reply(std::move(document));
  reply.type = "application/json";
  return reply;
}

Reply ok_reply() {
  return json_reply(Json().begin_object().member("ok", true).end_object().pretty());
}

std::string required(const Request &request, const char *name) {
  std::string value = request.value(name);
  if (value.empty())
    throw BadCommand(std::string("the parameter ") + name + " is missing");
  return value;
}

std::int64_t count_parameter(const Request &request, const char *name) {
  if (!request.has(name))
    return 0;
  const std::optional<std::int64_t> count = whole_number(request.value(name));
  if (!count || *count < 0 || *count > max_count)
    throw BadCommand(std::string("the parameter ") + name + " is not a count");
  return *count;
}

}  // namespace commands

namespace {

Reply json_error(unsigned status, const char *reason) {
  Reply reply =
      commands::json_reply(Json().begin_object().member("error", reason).end_object().pretty());
  reply.status = status;
  return reply;
}

struct ControlCommand {
  const char *method;
  const char *path;
  const char *description;
  Reply (*handler)(const ControlContext &, const Request &);
};

Reply list_commands(const ControlContext &context, const Request &request);

constexpr std::array all_commands{
    ControlCommand{"GET", "/commands", "this list", list_commands},
    ControlCommand{"GET", "/status", "the clock and the number of items of each kind",
                   commands::status},
    ControlCommand{
        "POST", "/advance",
        "advances the clock and changes postings: seconds, new, updated, deleted, removed, "
        "newsgroups",
        commands::advance},
    ControlCommand{
        "POST", "/posting",
        "adds a posting with the given fields (Title, Cat, ...), or changes the one with id",
        commands::posting},
    ControlCommand{"POST", "/fault", "adds a fault: path, kind, times (0: no limit), argument",
                   commands::add_fault},
    ControlCommand{"GET", "/faults", "the pending faults", commands::list_faults},
    ControlCommand{"DELETE", "/faults", "removes all faults", commands::clear_faults},
    ControlCommand{"GET", "/requests", "the logged requests, without credentials",
                   commands::list_requests},
    ControlCommand{"DELETE", "/requests", "clears the request log", commands::clear_requests},
    ControlCommand{"POST", "/account",
                   "adds or changes an account: user, password, banned and profile fields",
                   commands::account},
    ControlCommand{"POST", "/message", "sends a message to a member: to, from, subject, body",
                   commands::message},
    ControlCommand{
        "POST", "/reaction",
        "adds a reaction of user to posting: body, reply; or edits the body of reaction id",
        commands::reaction},
    ControlCommand{"DELETE", "/reaction", "withdraws the reaction with id",
                   commands::withdraw_reaction},
    ControlCommand{"POST", "/address",
                   "bans an address from signing up, or lifts the ban: address, banned",
                   commands::address},
    ControlCommand{"POST", "/signup-pause", "sets --signup-pause: hours", commands::signup_pause},
};

Reply list_commands(const ControlContext &, const Request &) {
  Json json;
  json.begin_array();
  for (const ControlCommand &command : all_commands) {
    json.begin_object().member("method", command.method).member("path", command.path);
    json.member("description", command.description).end_object();
  }
  return commands::json_reply(json.end_array().pretty());
}

Reply execute(const ControlContext &context, const Request &request) {
  // Otherwise any web page open in the user's browser could control the server.
  if (request.from_web_page)
    return json_error(403, "requests from web pages are rejected");
  // A page could also make its own host name resolve to this address (DNS rebinding).
  if (!request.for_loopback)
    return json_error(403, "the host of the request is not a loopback address of this port");
  const auto *const found = std::ranges::find_if(all_commands, [&](const ControlCommand &command) {
    return command.path == request.path && command.method == request.method;
  });
  if (found == all_commands.end())
    return json_error(404, "there is no such command");
  return found->handler(context, request);
}

}  // namespace

Reply answer_control(const ControlContext &context, const Request &request) noexcept {
  try {
    return execute(context, request);
  } catch (const commands::BadCommand &error) {
    return json_error(400, error.what());
  } catch (const std::exception &error) {
    return json_error(500, error.what());
  }
}

}  // namespace velkor::server
