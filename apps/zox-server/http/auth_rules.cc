/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/auth_rules.h"

#include <algorithm>
#include <array>

#include "support/owned.h"

namespace velkor::server {
namespace {

std::string keyed_hash(const std::string &url, const std::string &password) {
  const OwnedText hash(g_compute_hmac_for_string(
      G_CHECKSUM_SHA256, reinterpret_cast<const guchar *>(password.data()), password.size(),
      url.data(), static_cast<gssize>(url.size())));
  return hash.get();
}

std::string plain_password(const std::string &, const std::string &password) {
  return password;
}

constexpr std::array rules{
    AuthRule{"hmac-sha256", "HMAC-SHA256 of the complete URL under the password, in hexadecimal",
             keyed_hash},
    AuthRule{"plain", "the password itself", plain_password},
};

}  // namespace

std::span<const AuthRule> auth_rules() {
  return rules;
}

const AuthRule *find_auth_rule(std::string_view name) {
  const auto *const found =
      std::ranges::find_if(rules, [name](const AuthRule &rule) { return rule.name == name; });
  return found == rules.end() ? nullptr : found;
}

bool equal_secrets(std::string_view left, std::string_view right) {
  if (left.size() != right.size())
    return false;
  unsigned difference = 0;
  for (std::size_t at = 0; at < left.size(); ++at)
    difference |= static_cast<unsigned>(left[at] ^ right[at]);
  return difference == 0;
}

}  // namespace velkor::server
