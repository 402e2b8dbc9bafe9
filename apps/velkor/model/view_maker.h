/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Searches and sorts on a thread of its own, so that the main loop never waits for it. Only the
 * latest request counts: one that comes while another is worked on takes the place of those
 * between.
 */
#ifndef VELKOR_APP_MODEL_VIEW_MAKER_H
#define VELKOR_APP_MODEL_VIEW_MAKER_H

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "model/order.h"
#include "model/snapshot.h"
#include "model/spot_query.h"

namespace velkor::app {

/** The rows that a query selected from a snapshot; never changed. */
struct SpotView {
  SharedSnapshot snapshot;
  SpotQuery query;
  std::vector<Row> rows;
  std::uint64_t request;  // the number that request() returned
};

using SharedView = std::shared_ptr<const SpotView>;

class ViewMaker {
public:
  /** Called on the maker's thread. */
  using Deliver = std::function<void(SharedView)>;

  explicit ViewMaker(Deliver deliver);
  /** Waits until nothing is worked on; what is still wanted is not made. */
  ~ViewMaker();
  ViewMaker(const ViewMaker &) = delete;
  ViewMaker &operator=(const ViewMaker &) = delete;

  /** @return the number of the request; later ones have higher numbers */
  std::uint64_t request(SharedSnapshot snapshot, SpotQuery query);

private:
  struct Request {
    SharedSnapshot snapshot;
    SpotQuery query;
    std::uint64_t number;
  };

  void run();
  std::optional<Request> next();
  SharedView make(Request request);

  Deliver deliver_;
  std::mutex lock_;
  std::condition_variable changed_;
  std::optional<Request> wanted_;
  std::uint64_t latest_ = 0;
  bool ending_ = false;
  SharedSnapshot ordered_;
  std::optional<Orders> orders_;
  std::thread thread_;  // the last member: it uses all others
};

}  // namespace velkor::app

#endif
