/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox_http_plugin.h"

#include <array>

#include <unistd.h>

#include "support/owned.h"

using velkor::OwnedText;

namespace {

/** "TIME.NONCE", never the same twice; null when the system has no random bytes. */
OwnedText make_salt() {
  std::array<guint8, 16> nonce{};
  if (getentropy(nonce.data(), nonce.size()) != 0)
    return nullptr;
  GString *salt = g_string_new(nullptr);
  g_string_printf(salt, "%" G_GINT64_FORMAT ".", g_get_real_time() / G_USEC_PER_SEC);
  for (const guint8 byte : nonce)
    g_string_append_printf(salt, "%02x", byte);
  return OwnedText(g_string_free(salt, FALSE));
}

}  // namespace

char *zox_plugin_auth(const char *url, const GString *password) {
  const OwnedText salt = make_salt();
  if (!salt)
    return nullptr;
  const OwnedText text(g_strconcat(salt.get(), ".", url, nullptr));
  const OwnedText hash(g_compute_hmac_for_string(G_CHECKSUM_SHA256,
                                                 reinterpret_cast<const guchar *>(password->str),
                                                 password->len, text.get(), -1));
  return g_strconcat(salt.get(), ".", hash.get(), nullptr);
}
