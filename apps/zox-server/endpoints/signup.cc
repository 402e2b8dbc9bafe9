/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Signing up a new member. */
#include <algorithm>

#include <glib.h>

#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr const char *invalid = "E0";
constexpr const char *name_taken = "E1";
constexpr const char *address_banned = "E2";
constexpr const char *recent_member = "E3";

constexpr std::size_t max_name_size = 32;
constexpr std::size_t min_password_size = 4;

/** A colon would end the name in the credentials, a bar would end it in lists. */
bool is_name(const std::string &name) {
  const auto forbidden = [](char letter) {
    return letter == ':' || letter == '|' || g_ascii_iscntrl(letter);
  };
  return !name.empty() && name.size() <= max_name_size && std::ranges::none_of(name, forbidden) &&
         g_utf8_validate(name.c_str(), -1, nullptr) != FALSE;
}

bool is_email(const std::string &email) {
  const std::size_t sign = email.find('@');
  return sign != std::string::npos && sign > 0 && sign + 1 < email.size();
}

bool had_recent_member(Service &service, const std::string &address) {
  const std::int64_t pause = service.settings.signup_pause_hours * 3600;
  const std::int64_t seen = service.addresses.last_seen(address);
  return pause > 0 && seen > 0 && service.clock.now() - seen < pause;
}

/** The reply that rejects the request, null when it is acceptable. */
const char *rejection_of(Service &service, const Request &request) {
  if (request.value("mode") != "signup" || !is_name(request.value("u")) ||
      request.value("p").size() < min_password_size || !is_email(request.value("e")))
    return invalid;
  if (service.addresses.is_banned(request.client_address))
    return address_banned;
  if (service.accounts.is_taken(request.value("u")))
    return name_taken;
  return had_recent_member(service, request.client_address) ? recent_member : nullptr;
}

}  // namespace

Reply signup(Service &service, const Request &request, const Account &) {
  if (const char *rejection = rejection_of(service, request))
    return text_reply(rejection);
  const std::int64_t now = service.clock.now();
  const Account account{request.value("u"), request.value("p"), false};
  service.accounts.put(account, now);
  // The e-mail address is not stored: profiles are public, and members fill in their own.
  service.addresses.mark_seen(request.client_address, now);
  return text_reply(word::done);
}

}  // namespace velkor::server::endpoints
