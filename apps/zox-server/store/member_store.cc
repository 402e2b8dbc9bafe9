/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/member_store.h"

namespace velkor::server {

MailStore::MailStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS message (id INTEGER PRIMARY KEY,"
                    " sender TEXT NOT NULL, addressee TEXT NOT NULL, subject TEXT NOT NULL,"
                    " body TEXT NOT NULL, stamp INTEGER NOT NULL);"
                    "CREATE INDEX IF NOT EXISTS message_addressee ON message (addressee)");
}

void MailStore::put(const Message &message) {
  database_.run("INSERT INTO message (sender, addressee, subject, body, stamp)"
                " VALUES (?, ?, ?, ?, ?)",
                message.from, message.to, message.subject, message.body, message.stamp);
}

bool MailStore::has_waiting(const std::string &member) {
  return database_.number("SELECT EXISTS (SELECT 1 FROM message WHERE addressee = ?)", member) != 0;
}

std::vector<Message> MailStore::take(const std::string &member) {
  std::vector<Message> messages;
  Transaction transaction(database_);
  Statement statement = database_.prepare("SELECT sender, addressee, subject, body, stamp"
                                          " FROM message WHERE addressee = ? ORDER BY id");
  for (statement.bind(member); statement.step();)
    messages.push_back({statement.text(0), statement.text(1), statement.text(2), statement.text(3),
                        statement.integer(4)});
  database_.run("DELETE FROM message WHERE addressee = ?", member);
  transaction.commit();
  return messages;
}

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
