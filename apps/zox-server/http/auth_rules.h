/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The rules by which clients derive the secret of a request from the password. */
#ifndef ZOX_SERVER_HTTP_AUTH_RULES_H
#define ZOX_SERVER_HTTP_AUTH_RULES_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace velkor::server {

struct AuthRule {
  const char *name;
  const char *description;
  /** What a member with that password sends for the URL, where `sent` tells time and nonce. */
  std::string (*secret)(std::string_view sent, const std::string &url, const std::string &password);
  /** Whether a secret has time and nonce and is accepted once, see store/nonce_store.h. */
  bool once;
};

/** All rules; the first is that of the reference plug-in. */
std::span<const AuthRule> auth_rules();
/** The rule with that name, null when there is none. */
const AuthRule *find_auth_rule(std::string_view name);

/** The time and the nonce that a secret of the form "TIME.NONCE.HASH" begins with. */
struct Salt {
  std::int64_t time = 0;
  std::string nonce;
};
/** Nothing unless the time is a number and the nonce has 32 lower-case hexadecimal digits. */
std::optional<Salt> salt_of(std::string_view secret);

/** Compares in constant time, so that the duration does not reveal where the texts differ. */
bool equal_secrets(std::string_view left, std::string_view right);

}  // namespace velkor::server

#endif
