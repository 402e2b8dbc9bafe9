/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/account_store.h"

#include <array>

namespace velkor::server {
namespace {

constexpr std::array fields{
    ProfileField{"Stamp", &Profile::joined},  ProfileField{"Rank", &Profile::rank},
    ProfileField{"EMail", &Profile::email},   ProfileField{"Info", &Profile::info},
    ProfileField{"Avatar", &Profile::avatar}, ProfileField{"Status", &Profile::status},
    ProfileField{"Site", &Profile::site},     ProfileField{"IM", &Profile::messenger},
    ProfileField{"ISP", &Profile::provider},  ProfileField{"NS", &Profile::news_server},
    ProfileField{"Hobby", &Profile::hobby},   ProfileField{"PStat", &Profile::profile_status},
};

using Number = std::int64_t Profile::*;
using Text = std::string Profile::*;

std::string definition() {
  std::string sql = "CREATE TABLE IF NOT EXISTS account (name TEXT PRIMARY KEY,"
                    " password TEXT NOT NULL, banned INTEGER NOT NULL,"
                    " seen INTEGER NOT NULL DEFAULT 0";
  for (const ProfileField &field : fields) {
    const bool is_text = std::holds_alternative<Text>(field.member);
    sql += std::string(", ") + field.name +
           (is_text ? " TEXT NOT NULL DEFAULT ''" : " INTEGER NOT NULL DEFAULT 0");
  }
  return sql + ")";
}

/** "Stamp, Rank, ..." with `suffix` after each name. */
std::string columns(const char *suffix = "") {
  std::string list;
  for (const ProfileField &field : fields)
    list += std::string(list.empty() ? "" : ", ") + field.name + suffix;
  return list;
}

}  // namespace

std::span<const ProfileField> profile_fields() {
  return fields;
}

AccountStore::AccountStore(Database &database) : database_(database) {
  database_.execute(definition().c_str());
}

void AccountStore::put(const Account &account, std::int64_t joined) {
  database_.run("INSERT INTO account (name, password, banned, Stamp) VALUES (?1, ?2, ?3, ?4)"
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

std::vector<std::string> AccountStore::with_password() {
  std::vector<std::string> names;
  Statement statement =
      database_.prepare("SELECT name FROM account WHERE password <> '' ORDER BY name");
  while (statement.step())
    names.push_back(statement.text(0));
  return names;
}

bool AccountStore::is_taken(const std::string &name) {
  return database_.number("SELECT EXISTS (SELECT 1 FROM account WHERE name = ? COLLATE NOCASE)",
                          name) != 0;
}

std::optional<Profile> AccountStore::profile(const std::string &name) {
  Statement statement = database_.prepare("SELECT " + columns() + " FROM account WHERE name = ?");
  if (!statement.bind(name).step())
    return std::nullopt;
  Profile profile;
  int column = 0;
  for (const ProfileField &field : fields) {
    if (const Text *text = std::get_if<Text>(&field.member))
      profile.**text = statement.text(column);
    else
      profile.*std::get<Number>(field.member) = statement.integer(column);
    ++column;
  }
  return profile;
}

void AccountStore::set_profile(const std::string &name, const Profile &profile) {
  Statement statement =
      database_.prepare("UPDATE account SET " + columns(" = ?") + " WHERE name = ?");
  for (const ProfileField &field : fields) {
    if (const Text *text = std::get_if<Text>(&field.member))
      statement.append(profile.**text);
    else
      statement.append(profile.*std::get<Number>(field.member));
  }
  statement.append(name).run();
}

std::int64_t AccountStore::count() {
  return database_.number("SELECT count(*) FROM account");
}

void AccountStore::mark_seen(const std::string &name, std::int64_t now) {
  database_.run("UPDATE account SET seen = ? WHERE name = ?", now, name);
}

std::int64_t AccountStore::seen_since(std::int64_t since) {
  return database_.number("SELECT count(*) FROM account WHERE seen >= ?", since);
}

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

void AddressStore::mark_seen(const std::string &address, std::int64_t now) {
  database_.run("INSERT INTO address (address, seen) VALUES (?1, ?2)"
                " ON CONFLICT (address) DO UPDATE SET seen = ?2",
                address, now);
}

std::int64_t AddressStore::last_seen(const std::string &address) {
  return database_.number("SELECT seen FROM address WHERE address = ?", address);
}

}  // namespace velkor::server
