/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The watchlist that the server keeps for the user. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_SERVER_WATCHLIST_H
#define VELKOR_APP_LIBRARY_SERVER_WATCHLIST_H

#include <cstddef>
#include <string>

namespace velkor::app {

struct WatchlistResult {
  std::string failure{};  // why nothing came of it; empty on success
  std::size_t added = 0;  // to the watchlist here
};

/** Adds what the server's watchlist holds to the one here. */
WatchlistResult download_watchlist();

/** Replaces the server's watchlist by the one here, unless that is empty. */
WatchlistResult upload_watchlist();

}  // namespace velkor::app

#endif
