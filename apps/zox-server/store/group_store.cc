/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/group_store.h"

namespace velkor::server {

GroupStore::GroupStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS newsgroup (id INTEGER PRIMARY KEY,"
                    " name TEXT NOT NULL UNIQUE, stamp INTEGER NOT NULL)");
}

std::int64_t GroupStore::add(const std::string &name, std::int64_t stamp) {
  database_.run("INSERT OR IGNORE INTO newsgroup (name, stamp) VALUES (?, ?)", name, stamp);
  return database_.number("SELECT id FROM newsgroup WHERE name = ?", name);
}

std::vector<Group> GroupStore::later_than(std::int64_t stamp) {
  std::vector<Group> groups;
  Statement statement =
      database_.prepare("SELECT id, name FROM newsgroup WHERE stamp > ? ORDER BY id");
  for (statement.bind(stamp); statement.step();)
    groups.push_back({statement.integer(0), statement.text(1)});
  return groups;
}

std::int64_t GroupStore::count() {
  return database_.number("SELECT count(*) FROM newsgroup");
}

}  // namespace velkor::server
