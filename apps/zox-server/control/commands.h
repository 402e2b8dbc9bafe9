/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The commands of the control port, and what they share. */
#ifndef ZOX_SERVER_CONTROL_COMMANDS_H
#define ZOX_SERVER_CONTROL_COMMANDS_H

#include <cstdint>
#include <stdexcept>
#include <string>

#include "zox-server/control/control.h"

namespace velkor::server::commands {

/** A command whose parameters make no sense; answered with HTTP 400. */
class BadCommand : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

Reply json_reply(std::string document);
/** The reply to a command that returns no data. */
Reply ok_reply();

/** The value of a mandatory parameter. @throws BadCommand when it is missing or empty */
std::string required(const Request &request, const char *name);
/** A count, 0 when the parameter is missing. @throws BadCommand when it is out of range */
std::int64_t count_parameter(const Request &request, const char *name);

Reply status(const ControlContext &context, const Request &request);
Reply advance(const ControlContext &context, const Request &request);
Reply posting(const ControlContext &context, const Request &request);

Reply add_fault(const ControlContext &context, const Request &request);
Reply list_faults(const ControlContext &context, const Request &request);
Reply clear_faults(const ControlContext &context, const Request &request);
Reply list_requests(const ControlContext &context, const Request &request);
Reply clear_requests(const ControlContext &context, const Request &request);

Reply account(const ControlContext &context, const Request &request);
Reply message(const ControlContext &context, const Request &request);
Reply reaction(const ControlContext &context, const Request &request);
Reply withdraw_reaction(const ControlContext &context, const Request &request);
Reply address(const ControlContext &context, const Request &request);
Reply signup_pause(const ControlContext &context, const Request &request);

}  // namespace velkor::server::commands

#endif
