/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/warning_store.h"

namespace velkor::server {

WarningStore::WarningStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS warning (id INTEGER PRIMARY KEY,"
                    " posting INTEGER NOT NULL, reaction INTEGER NOT NULL, member TEXT NOT NULL,"
                    " reason TEXT NOT NULL, UNIQUE (posting, reaction, member))");
}

std::optional<std::int64_t> WarningStore::add(const std::string &member, std::int64_t posting,
                                              std::int64_t reaction, const std::string &reason) {
  database_.run("INSERT OR IGNORE INTO warning (posting, reaction, member, reason)"
                " VALUES (?, ?, ?, ?)",
                posting, reaction, member, reason);
  if (database_.changes() == 0)
    return std::nullopt;
  return database_.last_id();
}

std::int64_t WarningStore::count(std::int64_t posting) {
  return database_.number("SELECT count(*) FROM warning WHERE posting = ?", posting);
}

}  // namespace velkor::server
