/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Subscriptions to changes: what comes in on any thread goes out on the subscriber's context. */
#include <velkor/zox_changes.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "core/changes.h"
#include "support/immortal.h"
#include "support/owned.h"
#include "support/thread_order.h"

namespace velkor {
namespace {

using OwnedContext = std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>>;
using OwnedSource = std::unique_ptr<GSource, ReleaseWith<g_source_unref>>;

/** Changes that have not been told yet, each once. */
struct PendingChanges {
  guint32 changes = 0;
  std::set<gint32> postIds;

  [[nodiscard]] bool empty() const noexcept { return changes == 0; }
};

struct Subscriber {
  ZoxChangeFunc function;
  gpointer userData;
  GDestroyNotify destroy;
};

class Subscription : public std::enable_shared_from_this<Subscription> {
public:
  Subscription(guint32 number, guint32 changes, GMainContext *context,
               const Subscriber &subscriber) noexcept
      : number_(number), changes_(changes), context_(g_main_context_ref(context)),
        subscriber_(subscriber) {}

  [[nodiscard]] guint32 number() const noexcept { return number_; }

  void note(ZoxChange change, gint32 postId) noexcept {
    if ((changes_ & static_cast<guint32>(change)) == 0)
      return;
    const std::lock_guard lock(mutex_);
    const bool waiting = !pending_.empty();
    pending_.changes |= static_cast<guint32>(change);
    if (change == ZOX_CHANGE_POSTING)
      pending_.postIds.insert(postId);
    if (!waiting)
      attach(tell_subscriber);
  }

  void end() noexcept {
    active_ = false;
    attach(release_data);
  }

private:
  using Reference = std::shared_ptr<Subscription>;

  void attach(GSourceFunc function) noexcept {
    const OwnedSource source(g_idle_source_new());
    g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
    auto *reference = std::make_unique<Reference>(shared_from_this()).release();
    g_source_set_callback(source.get(), function, reference, drop_reference);
    order_before(reference);
    g_source_attach(source.get(), context_.get());
  }
  static void drop_reference(gpointer reference) noexcept {
    const std::unique_ptr<Reference> last(static_cast<Reference *>(reference));
  }
  static gboolean tell_subscriber(gpointer reference) noexcept {
    order_after(reference);
    (*static_cast<Reference *>(reference))->tell();
    return G_SOURCE_REMOVE;
  }
  static gboolean release_data(gpointer reference) noexcept {
    order_after(reference);
    const Subscriber &subscriber = (*static_cast<Reference *>(reference))->subscriber_;
    if (subscriber.destroy != nullptr)
      subscriber.destroy(subscriber.userData);
    return G_SOURCE_REMOVE;
  }

  void tell() noexcept {
    PendingChanges pending;
    {
      const std::lock_guard lock(mutex_);
      std::swap(pending, pending_);
    }
    for (const ZoxChange change :
         {ZOX_CHANGE_LIST, ZOX_CHANGE_SETTINGS, ZOX_CHANGE_MAIL, ZOX_CHANGE_CACHE}) {
      if ((pending.changes & static_cast<guint32>(change)) != 0)
        call(change, 0);
    }
    for (const gint32 postId : pending.postIds)
      call(ZOX_CHANGE_POSTING, postId);
  }

  /** The function itself may have ended the subscription. */
  void call(ZoxChange change, gint32 postId) const noexcept {
    if (active_)
      subscriber_.function(change, postId, subscriber_.userData);
  }

  const guint32 number_;
  const guint32 changes_;
  const OwnedContext context_;
  const Subscriber subscriber_;
  std::atomic<bool> active_ = true;
  std::mutex mutex_;
  PendingChanges pending_;
};

class Subscriptions {
public:
  guint32 add(guint32 changes, GMainContext *context, const Subscriber &subscriber) noexcept {
    const std::lock_guard lock(mutex_);
    subscriptions_.push_back(
        std::make_shared<Subscription>(++last_number_, changes, context, subscriber));
    return last_number_;
  }

  bool end(guint32 number) noexcept {
    const std::lock_guard lock(mutex_);
    const auto place = std::ranges::find_if(
        subscriptions_, [number](const auto &each) { return each->number() == number; });
    if (place == subscriptions_.end())
      return false;
    (*place)->end();
    subscriptions_.erase(place);
    return true;
  }

  void tell(ZoxChange change, gint32 postId) noexcept {
    const std::lock_guard lock(mutex_);
    for (const auto &subscription : subscriptions_)
      subscription->note(change, postId);
  }

private:
  std::mutex mutex_;
  guint32 last_number_ = 0;
  std::vector<std::shared_ptr<Subscription>> subscriptions_;
};

Subscriptions &subscriptions() noexcept {
  return immortal<Subscriptions>();
}

std::atomic<ZoxFileStatus> cache_status = ZOX_FILE_FINE;

}  // namespace

void tell_change(ZoxChange change, gint32 postId) noexcept {
  subscriptions().tell(change, postId);
}

void note_cache_status(ZoxFileStatus status) noexcept {
  if (cache_status.exchange(status) != status)
    tell_change(ZOX_CHANGE_CACHE);
}

}  // namespace velkor

using namespace velkor;

extern "C" {

guint32 zox_changes_subscribe(guint32 changes, GMainContext *context, ZoxChangeFunc function,
                              gpointer userData, GDestroyNotify destroy) {
  return subscriptions().add(changes, context == nullptr ? g_main_context_default() : context,
                             {function, userData, destroy});
}

gboolean zox_changes_unsubscribe(guint32 subscription) {
  return subscriptions().end(subscription) ? TRUE : FALSE;
}

ZoxFileStatus zox_changes_cache_status(void) {
  return cache_status;
}

}  // extern "C"
