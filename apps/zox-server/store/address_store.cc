/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/address_store.h"

namespace velkor::server {

AddressStore::AddressStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS address (address TEXT PRIMARY KEY,"
                    " banned INTEGER NOT NULL DEFAULT 0, seen INTEGER NOT NULL DEFAULT 0)");
}

void AddressStore::ban(const std::string &address, bool banned) {
  database_.run("INSERT INTO address (address, banned) VALUES (?1, ?2)"
                " ON CONFLICT (address) DO UPDATE SET banned = ?2",
                address, banned);
}

bool AddressStore::is_banned(const std::string &address) {
  return database_.number("SELECT banned FROM address WHERE address = ?", address) != 0;
}

void AddressStore::seen(const std::string &address, std::int64_t now) {
  database_.run("INSERT INTO address (address, seen) VALUES (?1, ?2)"
                " ON CONFLICT (address) DO UPDATE SET seen = ?2",
                address, now);
}

std::int64_t AddressStore::last_seen(const std::string &address) {
  return database_.number("SELECT seen FROM address WHERE address = ?", address);
}

}  // namespace velkor::server
