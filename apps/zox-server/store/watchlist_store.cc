/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/watchlist_store.h"

namespace velkor::server {

WatchlistStore::WatchlistStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS watchlist (place INTEGER PRIMARY KEY,"
                    " member TEXT NOT NULL, posting INTEGER NOT NULL, UNIQUE (member, posting))");
}

void WatchlistStore::save(const std::string &member, std::span<const std::int64_t> postings) {
  Transaction transaction(database_);
  database_.run("DELETE FROM watchlist WHERE member = ?", member);
  for (const std::int64_t posting : postings)
    database_.run("INSERT OR IGNORE INTO watchlist (member, posting) VALUES (?, ?)", member,
                  posting);
  transaction.commit();
}

std::vector<std::int64_t> WatchlistStore::load(const std::string &member) {
  std::vector<std::int64_t> postings;
  Statement statement =
      database_.prepare("SELECT posting FROM watchlist WHERE member = ? ORDER BY place");
  for (statement.bind(member); statement.step();)
    postings.push_back(statement.integer(0));
  return postings;
}

}  // namespace velkor::server
