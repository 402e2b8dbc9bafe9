/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Whether what somebody asked for is still wanted. */
#ifndef VELKOR_APP_LIBRARY_CANCELLATION_H
#define VELKOR_APP_LIBRARY_CANCELLATION_H

#include <functional>
#include <memory>
#include <mutex>

namespace velkor::app {

/** Threads: any. */
class Cancellation {
public:
  /** Nothing is wanted any more; what runs is stopped. */
  void cancel();
  [[nodiscard]] bool cancelled() const;

  /**
   * Has cancel() call this function in place of an earlier one; at once if it was called before.
   * @param stop  must not block
   */
  void set_stop(std::function<void()> stop);

private:
  mutable std::mutex lock_;
  bool cancelled_ = false;
  std::function<void()> stop_;
};

using SharedCancellation = std::shared_ptr<Cancellation>;

}  // namespace velkor::app

#endif
