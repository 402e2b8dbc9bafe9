/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The watchlists that members keep with the service. */
#ifndef ZOX_SERVER_STORE_WATCHLIST_STORE_H
#define ZOX_SERVER_STORE_WATCHLIST_STORE_H

#include <span>
#include <string>
#include <vector>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

class WatchlistStore {
public:
  explicit WatchlistStore(Database &database);

  /** Replaces the member's list. */
  void save(const std::string &member, std::span<const std::int64_t> postings);
  /** The ids in the order in which they were saved. */
  [[nodiscard]] std::vector<std::int64_t> load(const std::string &member);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
