/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/forum_store.h"

#include <algorithm>

namespace velkor::server {
namespace {

constexpr const char *columns = "SELECT id, posting, author, body, stamp, edit, reply, changed"
                                " FROM reaction ";

Reaction read_reaction(const Statement &row) {
  return {row.integer(0), row.integer(1), row.text(2),    row.text(3),
          row.integer(4), row.integer(5), row.integer(6), row.integer(7)};
}

/** Creates the table, which must exist before statements on it are prepared. */
Database &with_table(Database &database) {
  database.execute("CREATE TABLE IF NOT EXISTS reaction (id INTEGER PRIMARY KEY,"
                   " posting INTEGER NOT NULL, author TEXT NOT NULL, body TEXT NOT NULL,"
                   " stamp INTEGER NOT NULL, edit INTEGER NOT NULL, reply INTEGER NOT NULL,"
                   " changed INTEGER NOT NULL);"
                   "CREATE INDEX IF NOT EXISTS reaction_posting ON reaction (posting, changed);"
                   "CREATE INDEX IF NOT EXISTS reaction_author ON reaction (author)");
  return database;
}

}  // namespace

ForumStore::ForumStore(Database &database)
    : database_(with_table(database)),
      insert_(database.prepare(
          "INSERT INTO reaction (posting, author, body, stamp, edit, reply, changed)"
          " VALUES (?1, ?2, ?3, ?4, 0, ?5, ?4)")) {}

std::int64_t ForumStore::add(Reaction reaction, std::int64_t now) {
  reaction.stamp = std::max(now, stamp(reaction.posting) + 1);
  add_old(reaction);
  return database_.last_id();
}

void ForumStore::add_old(const Reaction &reaction) {
  insert_.bind(reaction.posting, reaction.author, reaction.body, reaction.stamp, reaction.reply)
      .run();
}

bool ForumStore::edit(std::int64_t id, const std::string &body, std::int64_t now) {
  return change(id, body, false, now);
}

bool ForumStore::withdraw(std::int64_t id, std::int64_t now) {
  return change(id, "", true, now);
}

bool ForumStore::change(std::int64_t id, const std::string &body, bool withdrawn,
                        std::int64_t now) {
  const std::optional<Reaction> reaction = find(id);
  if (!reaction || reaction->edit < 0)
    return false;
  const std::int64_t changed = std::max(now, stamp(reaction->posting) + 1);
  database_.run("UPDATE reaction SET body = ?, edit = ?, changed = ? WHERE id = ?", body,
                withdrawn ? -1 : changed, changed, id);
  return true;
}

std::optional<Reaction> ForumStore::find(std::int64_t id) {
  Statement statement = database_.prepare(std::string(columns) + "WHERE id = ?");
  if (!statement.bind(id).step())
    return std::nullopt;
  return read_reaction(statement);
}

std::vector<Reaction> ForumStore::changed_after(std::int64_t posting, std::int64_t stamp) {
  std::vector<Reaction> reactions;
  Statement statement =
      database_.prepare(std::string(columns) + "WHERE posting = ? AND changed > ? ORDER BY id");
  for (statement.bind(posting, stamp); statement.step();)
    reactions.push_back(read_reaction(statement));
  return reactions;
}

std::int64_t ForumStore::stamp(std::int64_t posting) {
  return database_.number("SELECT max(changed) FROM reaction WHERE posting = ?", posting);
}

std::int64_t ForumStore::count(std::int64_t posting) {
  return database_.number("SELECT count(*) FROM reaction WHERE posting = ? AND edit >= 0", posting);
}

std::int64_t ForumStore::count_by(const std::string &author) {
  return database_.number("SELECT count(*) FROM reaction WHERE author = ? AND edit >= 0", author);
}

}  // namespace velkor::server
