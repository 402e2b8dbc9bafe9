/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Which path is answered by whom, and for whom. */
#ifndef ZOX_SERVER_HTTP_ROUTES_H
#define ZOX_SERVER_HTTP_ROUTES_H

#include <string_view>

#include "zox-server/endpoints/endpoints.h"

namespace velkor::server {

enum class Access { members, everyone };

struct Route {
  /** A path that ends with a slash stands for everything below it. */
  std::string_view path;
  Access access;
  Reply (*handler)(Service &, const Request &, const Account &);
  /** A parameter that no log shows, if any. */
  std::string_view hidden_parameter;
};

/** The route of a path, null when there is none. */
const Route *find_route(std::string_view path);
/** Whether the path lies on the static host. */
bool is_dump_path(std::string_view path);

}  // namespace velkor::server

#endif
