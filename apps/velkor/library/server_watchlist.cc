/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/server_watchlist.h"

#include <utility>

#include "library/ask_server.h"

namespace velkor::app {
namespace {

WatchlistResult watchlist_result_of(const ZoxRequest &request) {
  return {result_of(request).message, static_cast<std::size_t>(zox_request_number(&request))};
}

}  // namespace

SharedCancellation download_watchlist(Session &session, WatchlistFunction done) {
  return ask_server(session, zox_request_watchlist_load, watchlist_result_of, std::move(done));
}

SharedCancellation upload_watchlist(Session &session, WatchlistFunction done) {
  return ask_server(session, zox_request_watchlist_save, watchlist_result_of, std::move(done));
}

}  // namespace velkor::app
