/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The nonces of the secrets that were accepted, so that none is accepted twice. */
#ifndef ZOX_SERVER_STORE_NONCE_STORE_H
#define ZOX_SERVER_STORE_NONCE_STORE_H

#include <cstdint>
#include <string>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

class NonceStore {
public:
  explicit NonceStore(Database &database);

  /**
   * Uses up a member's nonce. Those that could no longer be used are forgotten.
   * @param time when it was made, in seconds since 1970, as `now` is
   * @return false when it was used before, or made too far from `now`
   */
  bool use(const std::string &member, const std::string &nonce, std::int64_t time,
           std::int64_t now);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
