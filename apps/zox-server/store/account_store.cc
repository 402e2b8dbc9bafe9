/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/account_store.h"

namespace velkor::server {

AccountStore::AccountStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS account (name TEXT PRIMARY KEY,"
                    " password TEXT NOT NULL, banned INTEGER NOT NULL, joined INTEGER NOT NULL,"
                    " seen INTEGER NOT NULL DEFAULT 0)");
}

void AccountStore::put(const Account &account, std::int64_t joined) {
  database_.run("INSERT INTO account (name, password, banned, joined) VALUES (?1, ?2, ?3, ?4)"
                " ON CONFLICT (name) DO UPDATE SET password = ?2, banned = ?3",
                account.name, account.password, account.banned, joined);
}

std::optional<Account> AccountStore::find(const std::string &name) {
  Statement statement =
      database_.prepare("SELECT name, password, banned FROM account WHERE name = ?");
  if (!statement.bind(name).step())
    return std::nullopt;
  return Account{statement.text(0), statement.text(1), statement.integer(2) != 0};
}

bool AccountStore::any_with_password() {
  return database_.number("SELECT EXISTS (SELECT 1 FROM account WHERE password <> '')") != 0;
}

std::int64_t AccountStore::count() {
  return database_.number("SELECT count(*) FROM account");
}

void AccountStore::seen(const std::string &name, std::int64_t now) {
  database_.run("UPDATE account SET seen = ? WHERE name = ?", now, name);
}

std::int64_t AccountStore::seen_since(std::int64_t since) {
  return database_.number("SELECT count(*) FROM account WHERE seen >= ?", since);
}

}  // namespace velkor::server
