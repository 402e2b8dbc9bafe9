/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The endpoints, one function per path. `account` is the requesting member's; on paths that are
 * open to everyone it is empty.
 */
#ifndef ZOX_SERVER_ENDPOINTS_ENDPOINTS_H
#define ZOX_SERVER_ENDPOINTS_ENDPOINTS_H

#include <string_view>

#include "zox-server/http/message.h"
#include "zox-server/service.h"

namespace velkor::server::endpoints {

inline constexpr std::string_view dump_directory = "/3.7.3/dumps/";

/** One-word replies. */
namespace word {
inline constexpr const char *done = "OK";
inline constexpr const char *failed = "FAIL";
inline constexpr const char *duplicate = "DUPE";
inline constexpr const char *not_found = "NOTFOUND";
inline constexpr const char *locked = "LOCKED";
inline constexpr const char *sent = "SENT";
inline constexpr const char *mail_waiting = "Y";
inline constexpr const char *no_mail = "N";
}  // namespace word

Reply availability(Service &service, const Request &request, const Account &account);
Reply dump(Service &service, const Request &request, const Account &account);
Reply newsgroups(Service &service, const Request &request, const Account &account);
Reply find_posting(Service &service, const Request &request, const Account &account);
Reply posting_details(Service &service, const Request &request, const Account &account);
Reply forum(Service &service, const Request &request, const Account &account);
Reply react(Service &service, const Request &request, const Account &account);
Reply watchlist(Service &service, const Request &request, const Account &account);
Reply mail(Service &service, const Request &request, const Account &account);
Reply kudos(Service &service, const Request &request, const Account &account);
Reply warn(Service &service, const Request &request, const Account &account);
Reply profile(Service &service, const Request &request, const Account &account);
Reply myzox(Service &service, const Request &request, const Account &account);
Reply new_spot(Service &service, const Request &request, const Account &account);
Reply signup(Service &service, const Request &request, const Account &account);

}  // namespace velkor::server::endpoints

#endif
