/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/view_maker.h"

#include <utility>

#include <malloc.h>

namespace velkor::app {

ViewMaker::ViewMaker(Deliver deliver) : deliver_(std::move(deliver)), thread_([this] { run(); }) {}

ViewMaker::~ViewMaker() {
  {
    const std::lock_guard guard(lock_);
    ending_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

std::uint64_t ViewMaker::request(SharedSnapshot snapshot, SpotQuery query) {
  std::uint64_t number = 0;
  {
    const std::lock_guard guard(lock_);
    number = ++latest_;
    wanted_ = Request{std::move(snapshot), std::move(query), number};
  }
  changed_.notify_one();
  return number;
}

void ViewMaker::run() {
  while (std::optional<Request> request = next())
    deliver_(make(std::move(*request)));
}

std::optional<ViewMaker::Request> ViewMaker::next() {
  std::unique_lock guard(lock_);
  changed_.wait(guard, [this] { return ending_ || wanted_; });
  if (ending_)
    return std::nullopt;
  return std::exchange(wanted_, std::nullopt);
}

SharedView ViewMaker::make(Request request) {
  if (request.snapshot != ordered_) {
    ordered_ = request.snapshot;
    orders_.emplace(ordered_);
  }
  const bool ordered = orders_->has(request.query.sorting.column);
  std::vector<Row> rows = select_rows(*request.snapshot, *orders_, request.query);
  if (!ordered)
    malloc_trim(0);  // sorting needs much more than its result
  return std::make_shared<SpotView>(SpotView{std::move(request.snapshot), std::move(request.query),
                                             std::move(rows), request.number});
}

}  // namespace velkor::app
