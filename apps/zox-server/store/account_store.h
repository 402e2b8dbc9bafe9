/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The members of the service. */
#ifndef ZOX_SERVER_STORE_ACCOUNT_STORE_H
#define ZOX_SERVER_STORE_ACCOUNT_STORE_H

#include <optional>
#include <string>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct Account {
  std::string name;
  /** Without one nobody can log in. The secret of a request is made from it, so it is kept. */
  std::string password;
  bool banned = false;
};

class AccountStore {
public:
  explicit AccountStore(Database &database);

  /** Adds the account, or gives the one of that name this password and state. */
  void put(const Account &account, std::int64_t joined);
  [[nodiscard]] std::optional<Account> find(const std::string &name);
  /** Whether anyone can log in. */
  [[nodiscard]] bool any_with_password();
  [[nodiscard]] std::int64_t count();

  void seen(const std::string &name, std::int64_t now);
  /** How many were seen at or after `since`. */
  [[nodiscard]] std::int64_t seen_since(std::int64_t since);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
