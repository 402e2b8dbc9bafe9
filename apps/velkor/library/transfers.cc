/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/transfers.h"

#include <utility>

#include <velkor/zox_http_curl.h>

namespace velkor::app {
namespace {

thread_local const WatchedTransfers *current = nullptr;

gint on_transfer(gint64 received, gint64 expected, gpointer /*unused*/) noexcept {
  return current == nullptr || current->note(received, expected) ? 0 : 1;
}

}  // namespace

void install_transfer_callback() {
  zox_http_set_transfer_callback(on_transfer, nullptr);
}

void remove_transfer_callback() {
  zox_http_set_transfer_callback(nullptr, nullptr);
}

WatchedTransfers::WatchedTransfers(const Cancellation &cancellation, Follow follow)
    : cancellation_(cancellation), follow_(std::move(follow)) {
  current = this;
}

WatchedTransfers::~WatchedTransfers() {
  current = nullptr;
}

bool WatchedTransfers::note(std::int64_t received, std::int64_t expected) const {
  if (follow_)
    follow_(received, expected);
  return !cancellation_.cancelled();
}

}  // namespace velkor::app
