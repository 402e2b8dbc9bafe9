/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The watchlist that the server keeps for the user. Threads: the main one. */
#ifndef VELKOR_APP_LIBRARY_SERVER_WATCHLIST_H
#define VELKOR_APP_LIBRARY_SERVER_WATCHLIST_H

#include <cstddef>
#include <functional>
#include <string>

#include "library/session.h"

namespace velkor::app {

struct WatchlistResult {
  std::string failure{};  // why nothing came of it; empty on success
  std::size_t added = 0;  // to the watchlist here
};

using WatchlistFunction = std::function<void(const WatchlistResult &)>;

/** Adds what the server's watchlist holds to the one here. */
SharedCancellation download_watchlist(Session &session, WatchlistFunction done);

/** Replaces the server's watchlist by the one here, unless that is empty. */
SharedCancellation upload_watchlist(Session &session, WatchlistFunction done);

}  // namespace velkor::app

#endif
