/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A new member. */
#include <algorithm>

#include <glib.h>

#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr const char *impossible = "E0";
constexpr const char *name_taken = "E1";
constexpr const char *address_banned = "E2";
constexpr const char *member_was_here = "E3";

constexpr std::size_t longest_name = 32;
constexpr std::size_t shortest_password = 4;

/** A colon would end the name in the credentials. */
bool is_name(const std::string &name) {
  const auto forbidden = [](char letter) {
    return letter == ':' || letter == '|' || g_ascii_iscntrl(letter);
  };
  return !name.empty() && name.size() <= longest_name && std::ranges::none_of(name, forbidden) &&
         g_utf8_validate(name.c_str(), -1, nullptr) != FALSE;
}

bool is_email(const std::string &email) {
  const std::size_t at = email.find('@');
  return at != std::string::npos && at > 0 && at + 1 < email.size();
}

bool was_member_here(Service &service, const std::string &address) {
  const std::int64_t pause = service.settings.signup_pause_hours * 3600;
  const std::int64_t seen = service.addresses.last_seen(address);
  return pause > 0 && seen > 0 && service.clock.now() - seen < pause;
}

/** The word that refuses the request, null when nothing speaks against it. */
const char *refusal_of(Service &service, const Request &request) {
  if (request.value("mode") != "signup" || !is_name(request.value("u")) ||
      request.value("p").size() < shortest_password || !is_email(request.value("e")))
    return impossible;
  if (service.addresses.is_banned(request.client_address))
    return address_banned;
  if (service.accounts.is_taken(request.value("u")))
    return name_taken;
  return was_member_here(service, request.client_address) ? member_was_here : nullptr;
}

}  // namespace

Reply signup(Service &service, const Request &request, const Account &) {
  if (const char *refusal = refusal_of(service, request))
    return text_reply(refusal);
  const std::int64_t now = service.clock.now();
  const Account account{request.value("u"), request.value("p"), false};
  service.accounts.put(account, now);
  // The address is not kept: that of the profile is for everyone to see, and the member's choice.
  service.addresses.seen(request.client_address, now);
  return text_reply(word::ok);
}

}  // namespace velkor::server::endpoints
