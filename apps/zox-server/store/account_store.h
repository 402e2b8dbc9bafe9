/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Accounts, profiles and the addresses of clients. */
#ifndef ZOX_SERVER_STORE_ACCOUNT_STORE_H
#define ZOX_SERVER_STORE_ACCOUNT_STORE_H

#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct Account {
  std::string name;
  /** Empty when the member cannot log in. Kept, since secrets of requests are derived from it. */
  std::string password;
  bool banned = false;
};

/** What members publish about themselves, and what the service adds. */
struct Profile {
  std::int64_t joined = 0;
  std::int64_t rank = 0;
  std::int64_t status = 0;
  std::int64_t profile_status = 0;
  std::string email;
  std::string info;
  std::string avatar;
  std::string site;
  std::string messenger;
  std::string provider;
  std::string news_server;
  std::string hobby;
};

struct ProfileField {
  /** The name of the element and of the column. */
  const char *name;
  std::variant<std::int64_t Profile::*, std::string Profile::*> member;
};

std::span<const ProfileField> profile_fields();

class AccountStore {
public:
  explicit AccountStore(Database &database);

  /** Adds the account, or updates the one with that name; `joined` only counts for a new one. */
  void put(const Account &account, std::int64_t joined);
  [[nodiscard]] std::optional<Account> find(const std::string &name);
  /** The names of the members who can log in. */
  [[nodiscard]] std::vector<std::string> with_password();
  /** Whether a member has that name, regardless of letter case. */
  [[nodiscard]] bool is_taken(const std::string &name);
  [[nodiscard]] std::int64_t count();

  [[nodiscard]] std::optional<Profile> profile(const std::string &name);
  void set_profile(const std::string &name, const Profile &profile);

  void mark_seen(const std::string &name, std::int64_t now);
  /** How many members were seen at or after `since`. */
  [[nodiscard]] std::int64_t seen_since(std::int64_t since);

private:
  Database &database_;
};

/** The IP addresses of clients: whether banned, and when a member was last seen there. */
class AddressStore {
public:
  explicit AddressStore(Database &database);

  void ban(const std::string &address, bool banned);
  [[nodiscard]] bool is_banned(const std::string &address);
  /** Records that a member sent a request from the address at `now`. */
  void mark_seen(const std::string &address, std::int64_t now);
  /** When a member last sent a request from the address, 0 for never. */
  [[nodiscard]] std::int64_t last_seen(const std::string &address);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
