/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/server_watchlist.h"

#include <velkor/zox_watchlist.h>

#include "library/call.h"

namespace velkor::app {
namespace {

std::size_t watched() {
  return g_slist_length(zox_watchlist_get());
}

}  // namespace

WatchlistResult download_watchlist() {
  const std::size_t before = watched();
  const CallResult result = call(zox_watchlist_download);
  return {result.message, watched() - before};
}

WatchlistResult upload_watchlist() {
  return {call(zox_watchlist_upload).message};
}

}  // namespace velkor::app
