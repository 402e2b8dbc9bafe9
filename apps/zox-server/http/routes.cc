/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/routes.h"

#include <algorithm>
#include <array>

namespace velkor::server {
namespace {

constexpr std::array routes{
    Route{"/3.7.3/xml.php", Access::members, endpoints::availability, ""},
    Route{"/3.7.3/dumps/", Access::everyone, endpoints::dump, ""},
    Route{"/3.7.3/xml-groups.php", Access::members, endpoints::newsgroups, ""},
};

bool covers(const Route &route, std::string_view path) {
  return route.path.ends_with('/') ? path.starts_with(route.path) : path == route.path;
}

}  // namespace

const Route *find_route(std::string_view path) {
  const auto found =
      std::ranges::find_if(routes, [path](const Route &route) { return covers(route, path); });
  return found == routes.end() ? nullptr : &*found;
}

bool is_dump_path(std::string_view path) {
  return path.starts_with(endpoints::dump_directory);
}

}  // namespace velkor::server
