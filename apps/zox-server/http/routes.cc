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
    Route{"/3.7.3/xml-findpost.php", Access::members, endpoints::find_posting, ""},
    Route{"/3.7.3/xml-posts.php", Access::members, endpoints::posting_details, ""},
    Route{"/3.7.3/xml-dyn.php", Access::members, endpoints::forum, ""},
    Route{"/3.7.3/xml-forum.php", Access::members, endpoints::react, ""},
    Route{"/3.7.3/xml-wlist.php", Access::members, endpoints::watchlist, ""},
    Route{"/3.7.3/xml-mail.php", Access::members, endpoints::mail, ""},
    Route{"/3.7.3/xml-kudos.php", Access::members, endpoints::kudos, ""},
    Route{"/3.7.3/xml-warn.php", Access::members, endpoints::warn, ""},
    Route{"/3.7.3/xml-user.php", Access::members, endpoints::profile, ""},
    Route{"/3.7.3/xml-myzox.php", Access::members, endpoints::myzox, ""},
    Route{"/3.7.3/xml-post.php", Access::members, endpoints::new_spot, ""},
    Route{"/3.7.3/xml-signup.php", Access::everyone, endpoints::signup, "p"},
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
