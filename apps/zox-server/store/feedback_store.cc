/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/feedback_store.h"

namespace velkor::server {

KudosStore::KudosStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS kudos (member TEXT NOT NULL,"
                    " posting INTEGER NOT NULL, value INTEGER NOT NULL,"
                    " PRIMARY KEY (member, posting))");
}

bool KudosStore::give(const std::string &member, std::int64_t posting, std::int64_t value) {
  database_.run("INSERT OR IGNORE INTO kudos (member, posting, value) VALUES (?, ?, ?)", member,
                posting, value);
  return database_.changes() > 0;
}

std::int64_t KudosStore::given(const std::string &member, std::int64_t posting) {
  return database_.number("SELECT value FROM kudos WHERE member = ? AND posting = ?", member,
                          posting);
}

std::int64_t KudosStore::given(const std::string &member) {
  return database_.number("SELECT total(value) FROM kudos WHERE member = ?", member);
}

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
