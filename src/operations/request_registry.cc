/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "operations/request_registry.h"

#include <algorithm>
#include <memory>

#include "operations/request.h"
#include "support/immortal.h"

namespace velkor {
namespace {

/** The context as this thread's while it lives, if nobody else runs it. */
class ContextHold {
public:
  explicit ContextHold(GMainContext *context) noexcept
      : context_(g_main_context_acquire(context) != FALSE ? context : nullptr) {}
  ~ContextHold() {
    if (context_ != nullptr)
      g_main_context_release(context_);
  }
  ContextHold(const ContextHold &) = delete;
  ContextHold &operator=(const ContextHold &) = delete;

  explicit operator bool() const noexcept { return context_ != nullptr; }

private:
  GMainContext *context_;
};

using HeldRequest = std::unique_ptr<ZoxRequest, ReleaseWith<zox_request_unref>>;

}  // namespace

void RequestRegistry::add(ZoxRequest &request) noexcept {
  request.ref();
  const std::lock_guard lock(mutex_);
  entries_.push_back({&request});
}

void RequestRegistry::note_work_done(ZoxRequest &request) noexcept {
  const std::lock_guard lock(mutex_);
  std::ranges::find(entries_, &request, &Entry::request)->work_done = true;
  request.attach_end();  // its source finds the entry, since it has to wait for the lock
  changed_.notify_all();
}

bool RequestRegistry::take(ZoxRequest &request) noexcept {
  const std::lock_guard lock(mutex_);
  const auto place = std::ranges::find(entries_, &request, &Entry::request);
  if (place == entries_.end() || !place->work_done)
    return false;
  entries_.erase(place);
  return true;
}

void RequestRegistry::end(ZoxRequest &request) noexcept {
  if (!take(request))
    return;
  const HeldRequest reference(&request);
  request.publish();
  request.tell_end();
  const std::lock_guard lock(mutex_);
  changed_.notify_all();
}

void RequestRegistry::cancel_all() noexcept {
  const std::lock_guard lock(mutex_);
  for (const Entry &entry : entries_)
    entry.request->cancel();
}

std::size_t RequestRegistry::count() noexcept {
  const std::lock_guard lock(mutex_);
  return entries_.size();
}

std::vector<ZoxRequest *> RequestRegistry::done_requests() noexcept {
  std::vector<ZoxRequest *> done;
  const std::lock_guard lock(mutex_);
  for (const Entry &entry : entries_) {
    if (entry.work_done) {
      entry.request->ref();
      done.push_back(entry.request);
    }
  }
  return done;
}

bool RequestRegistry::end_possible() noexcept {
  bool any = false;
  for (ZoxRequest *request : done_requests()) {
    const HeldRequest reference(request);
    if (const ContextHold hold(request->context()); hold) {
      end(*request);
      any = true;
    }
  }
  return any;
}

bool RequestRegistry::wait_until(Clock::time_point deadline) noexcept {
  for (;;) {
    if (end_possible())
      continue;
    std::unique_lock lock(mutex_);
    if (entries_.empty())
      return true;
    // A context may become free without notice; nobody waits for that for long.
    constexpr auto patience = std::chrono::milliseconds(50);
    const auto now = Clock::now();
    if (now >= deadline)
      return false;
    changed_.wait_until(lock, std::min(deadline, now + patience));
  }
}

void RequestRegistry::stop() noexcept {
  cancel_all();
  {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return std::ranges::all_of(entries_, &Entry::work_done); });
  }
  for (ZoxRequest *request : done_requests()) {
    const HeldRequest reference(request);
    request->publish();
  }
  end_possible();
}

RequestRegistry &request_registry() noexcept {
  return immortal<RequestRegistry>();
}

}  // namespace velkor
