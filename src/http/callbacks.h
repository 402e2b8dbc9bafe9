/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The functions of the front end that requests call. */
#ifndef VELKOR_HTTP_CALLBACKS_H
#define VELKOR_HTTP_CALLBACKS_H

#include <atomic>
#include <mutex>

#include <velkor/zox_http_curl.h>

namespace velkor {

template <typename Function>
struct Callback {
  Function function = nullptr;
  gpointer data = nullptr;
};

/** Keeps function and data together when threads change and use them at the same time. */
template <typename Function>
class SharedCallback {
public:
  void set(Function function, gpointer data) noexcept {
    const std::lock_guard lock(mutex_);
    callback_ = {function, data};
  }
  [[nodiscard]] Callback<Function> get() const noexcept {
    const std::lock_guard lock(mutex_);
    return callback_;
  }

private:
  mutable std::mutex mutex_;
  Callback<Function> callback_;
};

/** The hook through which the front end looks for new mail every few minutes. */
class MailHook {
public:
  void set(ZoxMailCallback function, gpointer data) noexcept { callback_.set(function, data); }

  /**
   * Runs the hook on this thread when more than 300 seconds have passed since it last ran. Of
   * several threads that find it due at once, one runs it.
   * @param now  seconds since 1970
   */
  void run_if_due(gint64 now) noexcept {
    constexpr gint64 interval = 300;
    gint64 last = last_run_;
    if (now - last <= interval || !last_run_.compare_exchange_strong(last, now))
      return;
    const auto callback = callback_.get();
    if (callback.function != nullptr)
      callback.function(callback.data);
  }

private:
  SharedCallback<ZoxMailCallback> callback_;
  std::atomic<gint64> last_run_{0};
};

}  // namespace velkor

#endif
