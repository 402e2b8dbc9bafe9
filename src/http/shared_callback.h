/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A function of the front end with its data, installed on one thread and called on others. */
#ifndef VELKOR_HTTP_SHARED_CALLBACK_H
#define VELKOR_HTTP_SHARED_CALLBACK_H

#include <mutex>

#include <glib.h>

namespace velkor {

template <typename Function>
struct Callback {
  Function function = nullptr;
  gpointer data = nullptr;
};

/** Hands out function and data as they belong together. */
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

}  // namespace velkor

#endif
