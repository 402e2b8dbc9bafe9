/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/kudos_store.h"

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

}  // namespace velkor::server
