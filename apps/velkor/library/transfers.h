/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Stopping and following the transfers of a job. The library has one callback for all transfers,
 * which runs on the thread of each; what a thread is working on tells them apart.
 */
#ifndef VELKOR_APP_LIBRARY_TRANSFERS_H
#define VELKOR_APP_LIBRARY_TRANSFERS_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace velkor::app {

/** Whether what it was given for is still wanted. Threads: any. */
class Cancellation {
public:
  void cancel() noexcept { cancelled_.store(true, std::memory_order_relaxed); }
  [[nodiscard]] bool cancelled() const noexcept {
    return cancelled_.load(std::memory_order_relaxed);
  }

private:
  std::atomic<bool> cancelled_{false};
};

using SharedCancellation = std::shared_ptr<Cancellation>;

/** From now on the library reports its transfers here. */
void install_transfer_callback();
void remove_transfer_callback();

/** The transfers of this thread in its lifetime belong to one job. */
class WatchedTransfers {
public:
  using Follow = std::function<void(std::int64_t received, std::int64_t expected)>;

  /** @param follow  called while a transfer runs, on its thread; may be empty */
  explicit WatchedTransfers(const Cancellation &cancellation, Follow follow = {});
  ~WatchedTransfers();
  WatchedTransfers(const WatchedTransfers &) = delete;
  WatchedTransfers &operator=(const WatchedTransfers &) = delete;

  /** @return whether the transfer is to go on */
  [[nodiscard]] bool note(std::int64_t received, std::int64_t expected) const;

private:
  const Cancellation &cancellation_;
  Follow follow_;
};

}  // namespace velkor::app

#endif
