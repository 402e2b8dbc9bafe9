/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The newsgroups that postings name by number. */
#ifndef ZOX_SERVER_STORE_GROUP_STORE_H
#define ZOX_SERVER_STORE_GROUP_STORE_H

#include <string>
#include <vector>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct Group {
  std::int64_t id;
  std::string name;
};

class GroupStore {
public:
  explicit GroupStore(Database &database);

  /** Adds a newsgroup known since `stamp`. @return its number; that it had when known already */
  std::int64_t add(const std::string &name, std::int64_t stamp);
  /** The newsgroups known only after `stamp`, by number. */
  [[nodiscard]] std::vector<Group> later_than(std::int64_t stamp);
  [[nodiscard]] std::int64_t count();

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
