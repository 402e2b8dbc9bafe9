/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Private messages, kept until their addressee fetches them. */
#ifndef ZOX_SERVER_STORE_MAIL_STORE_H
#define ZOX_SERVER_STORE_MAIL_STORE_H

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
  [[nodiscard]] bool any_waiting(const std::string &member);
  /** Takes the member's waiting messages out of the store, the oldest first. */
  std::vector<Message> take(const std::string &member);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
