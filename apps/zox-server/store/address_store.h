/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The addresses from which clients come: banned ones, and when a member was last seen there. */
#ifndef ZOX_SERVER_STORE_ADDRESS_STORE_H
#define ZOX_SERVER_STORE_ADDRESS_STORE_H

#include <string>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

class AddressStore {
public:
  explicit AddressStore(Database &database);

  void ban(const std::string &address, bool banned);
  [[nodiscard]] bool is_banned(const std::string &address);
  /** A member came from there at `now`. */
  void seen(const std::string &address, std::int64_t now);
  /** When a member last came from there, 0 for never. */
  [[nodiscard]] std::int64_t last_seen(const std::string &address);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
