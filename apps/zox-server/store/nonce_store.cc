/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/nonce_store.h"

namespace velkor::server {
namespace {

/** How far, in seconds, the clock of a client may be from that of the server. */
constexpr std::int64_t tolerance = 300;

}  // namespace

NonceStore::NonceStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS nonce (member TEXT NOT NULL, nonce TEXT NOT NULL,"
                    " time INTEGER NOT NULL, PRIMARY KEY (member, nonce)) WITHOUT ROWID;"
                    " CREATE INDEX IF NOT EXISTS nonce_time ON nonce (time)");
}

bool NonceStore::use(const std::string &member, const std::string &nonce, std::int64_t time,
                     std::int64_t now) {
  const std::int64_t earliest = now - tolerance;
  if (time < earliest || time > now + tolerance)
    return false;
  database_.run("DELETE FROM nonce WHERE time < ?", earliest);
  database_.run("INSERT OR IGNORE INTO nonce (member, nonce, time) VALUES (?, ?, ?)", member, nonce,
                time);
  return database_.changes() > 0;
}

}  // namespace velkor::server
