/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the service keeps for each member: private messages and the watchlist. */
#ifndef ZOX_SERVER_STORE_MEMBER_STORE_H
#define ZOX_SERVER_STORE_MEMBER_STORE_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct Message {
  std::string from;
  std::string to;
  std::string subject;
  std::string body;
  std::int64_t stamp = 0;
};

class MailStore {
public:
  explicit MailStore(Database &database);

  void put(const Message &message);
  [[nodiscard]] bool has_waiting(const std::string &member);
  /** Removes and returns the member's waiting messages, the oldest first. */
  std::vector<Message> take(const std::string &member);

private:
  Database &database_;
};

class WatchlistStore {
public:
  explicit WatchlistStore(Database &database);

  /** Replaces the member's watchlist. */
  void save(const std::string &member, std::span<const std::int64_t> postings);
  /** The posting ids, in the order of saving. */
  [[nodiscard]] std::vector<std::int64_t> load(const std::string &member);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
