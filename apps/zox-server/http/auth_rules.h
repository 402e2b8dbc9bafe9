/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The rules by which clients derive the secret of a request from the password. */
#ifndef ZOX_SERVER_HTTP_AUTH_RULES_H
#define ZOX_SERVER_HTTP_AUTH_RULES_H

#include <span>
#include <string>
#include <string_view>

namespace velkor::server {

struct AuthRule {
  const char *name;
  const char *description;
  std::string (*secret)(const std::string &url, const std::string &password);
};

/** All rules; the first is that of the reference plug-in. */
std::span<const AuthRule> auth_rules();
/** The rule with that name, null when there is none. */
const AuthRule *find_auth_rule(std::string_view name);

/** Compares in constant time, so that the duration does not reveal where the texts differ. */
bool equal_secrets(std::string_view left, std::string_view right);

}  // namespace velkor::server

#endif
