/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The commands of the control address, and what they have in common. */
#ifndef ZOX_SERVER_CONTROL_COMMANDS_H
#define ZOX_SERVER_CONTROL_COMMANDS_H

#include <cstdint>
#include <stdexcept>
#include <string>

#include "zox-server/control/control.h"

namespace velkor::server::commands {

/** A command that cannot be carried out as it was given. */
class BadCommand : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

Reply json_reply(std::string document);
/** The reply to a command that has nothing to tell. */
Reply done();

/** The value of a parameter that must be there. */
std::string needed(const Request &request, const char *name);
/** A number of things, 0 when the parameter is not there. */
std::int64_t counted(const Request &request, const char *name);

Reply status(const Controlled &controlled, const Request &request);
Reply advance(const Controlled &controlled, const Request &request);
Reply posting(const Controlled &controlled, const Request &request);

Reply add_fault(const Controlled &controlled, const Request &request);
Reply list_faults(const Controlled &controlled, const Request &request);
Reply clear_faults(const Controlled &controlled, const Request &request);
Reply list_requests(const Controlled &controlled, const Request &request);
Reply clear_requests(const Controlled &controlled, const Request &request);

Reply account(const Controlled &controlled, const Request &request);
Reply message(const Controlled &controlled, const Request &request);
Reply reaction(const Controlled &controlled, const Request &request);
Reply withdraw_reaction(const Controlled &controlled, const Request &request);
Reply address(const Controlled &controlled, const Request &request);
Reply signup_pause(const Controlled &controlled, const Request &request);

}  // namespace velkor::server::commands

#endif
