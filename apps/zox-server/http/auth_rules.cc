/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/auth_rules.h"

#include <algorithm>
#include <array>

#include "support/numbers.h"
#include "support/owned.h"

namespace velkor::server {
namespace {

std::string keyed_hash(const std::string &text, const std::string &password) {
  const OwnedText hash(g_compute_hmac_for_string(
      G_CHECKSUM_SHA256, reinterpret_cast<const guchar *>(password.data()), password.size(),
      text.data(), static_cast<gssize>(text.size())));
  return hash.get();
}

std::string hash_with_salt(std::string_view sent, const std::string &url,
                           const std::string &password) {
  const std::string salt(sent.substr(0, sent.rfind('.') + 1));
  return salt + keyed_hash(salt + url, password);
}

std::string hash_of_url(std::string_view, const std::string &url, const std::string &password) {
  return keyed_hash(url, password);
}

std::string plain_password(std::string_view, const std::string &, const std::string &password) {
  return password;
}

constexpr std::array rules{
    AuthRule{"hmac-sha256-once",
             "TIME.NONCE. and the HMAC-SHA256 of TIME.NONCE.URL under the password, in hexadecimal",
             hash_with_salt, true},
    AuthRule{"hmac-sha256", "HMAC-SHA256 of the complete URL under the password, in hexadecimal",
             hash_of_url, false},
    AuthRule{"plain", "the password itself", plain_password, false},
};

bool is_nonce(std::string_view text) {
  constexpr std::size_t length = 32;
  return text.size() == length &&
         text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

}  // namespace

std::span<const AuthRule> auth_rules() {
  return rules;
}

const AuthRule *find_auth_rule(std::string_view name) {
  const auto *const found =
      std::ranges::find_if(rules, [name](const AuthRule &rule) { return rule.name == name; });
  return found == rules.end() ? nullptr : found;
}

std::optional<Salt> salt_of(std::string_view secret) {
  const std::size_t first = std::min(secret.find('.'), secret.size());
  const std::size_t last = secret.rfind('.');
  const std::optional<std::int64_t> time = whole_number(secret.substr(0, first));
  if (!time || first == last)
    return std::nullopt;
  const std::string_view nonce = secret.substr(first + 1, last - first - 1);
  return is_nonce(nonce) ? std::optional(Salt{*time, std::string(nonce)}) : std::nullopt;
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
