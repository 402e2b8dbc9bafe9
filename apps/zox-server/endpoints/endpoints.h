/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * What the service answers, one function a path. The account is that of the member who asks; on
 * paths that are open to everyone it is empty.
 */
#ifndef ZOX_SERVER_ENDPOINTS_ENDPOINTS_H
#define ZOX_SERVER_ENDPOINTS_ENDPOINTS_H

#include <string_view>

#include "zox-server/http/message.h"
#include "zox-server/service.h"

namespace velkor::server::endpoints {

inline constexpr std::string_view dump_directory = "/3.7.3/dumps/";

Reply availability(Service &service, const Request &request, const Account &account);
Reply dump(Service &service, const Request &request, const Account &account);
Reply newsgroups(Service &service, const Request &request, const Account &account);

}  // namespace velkor::server::endpoints

#endif
