/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "operations/request.h"

#include <utility>

#include "operations/request_registry.h"
#include "support/thread_order.h"

namespace velkor {
namespace {

OwnedContext reference_to(GMainContext *context) noexcept {
  return OwnedContext(g_main_context_ref(context == nullptr ? g_main_context_default() : context));
}

/** What a record says in one sentence; empty when its request did not fail. */
std::string sentence_of(const RequestRecord &record) noexcept {
  if (record.reason.empty())
    return {};
  return record.host + record.path + ": " + record.reason;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

ZoxRequest::ZoxRequest(RequestWork work, const ZoxRequestOptions *options) noexcept
    : work_(std::move(work)), options_(options == nullptr ? ZoxRequestOptions{} : *options),
      context_(reference_to(options_.context)) {}

void ZoxRequest::unref() noexcept {
  if (--references_ == 0)
    const std::unique_ptr<ZoxRequest> last(this);
}

void ZoxRequest::start() noexcept {
  request_registry().add(*this);
  ref();  // the thread's
  worker_ = std::make_unique<Worker>();
  order_before(this);
  GError *error = nullptr;
  GThread *thread = g_thread_try_new("velkor-request", run_on_thread, this, &error);
  if (thread != nullptr) {
    g_thread_unref(thread);
    return;
  }
  worker_.reset();
  const OwnedError owner(error);
  outcome_.message.reset(std::exchange(error->message, nullptr));
  finish_work(ZOX_REQUEST_FAILED);
  unref();
}

gpointer ZoxRequest::run_on_thread(gpointer data) noexcept {
  order_after(data);
  auto *request = static_cast<ZoxRequest *>(data);
  const std::unique_ptr<Worker> worker =
      std::move(request->worker_);  // the request may go before it
  Worker::begin();
  request->run();
  request->unref();
  return nullptr;
}

void ZoxRequest::run() noexcept {
  {
    const WorkFor scope(this);
    if (!cancelled())
      work_.run(outcome_);
  }
  latest_request_ = std::move(latest_request());
  file_outcome_ = file_outcome();
  finish_work(judge());
}

ZoxRequestState ZoxRequest::judge() const noexcept {
  const ZoxErrorCode code = outcome_.code;
  if (code == ZOX_RESULT_SUCCESS ||
      (code == ZOX_RESULT_NOTHING_NEW && work_.kind == ZOX_REQUEST_UPDATE) ||
      (code == ZOX_RESULT_SPOT_RESERVED && work_.kind == ZOX_REQUEST_SPOT))
    return ZOX_REQUEST_DONE;
  return cancelled() ? ZOX_REQUEST_CANCELLED : ZOX_REQUEST_FAILED;
}

OwnedSource ZoxRequest::make_source(GSourceFunc function) noexcept {
  OwnedSource source(g_idle_source_new());
  g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
  ref();
  g_source_set_callback(source.get(), function, this, unref_pointer);
  return source;
}

void ZoxRequest::unref_pointer(gpointer request) noexcept {
  static_cast<ZoxRequest *>(request)->unref();
}

void ZoxRequest::finish_work(ZoxRequestState state) noexcept {
  final_state_ = state;
  failure_ = state == ZOX_REQUEST_FAILED ? sentence_of(latest_request_) : std::string();
  if (state == ZOX_REQUEST_CANCELLED)
    outcome_.code = ZOX_RESULT_UNKNOWN_ERROR;
  request_registry().note_work_done(*this);
}

void ZoxRequest::attach_end() noexcept {
  end_source_ = make_source(end_on_context);
  order_before(this);
  g_source_attach(end_source_.get(), context_.get());
}

gboolean ZoxRequest::end_on_context(gpointer data) noexcept {
  order_after(data);
  request_registry().end(*static_cast<ZoxRequest *>(data));
  return G_SOURCE_REMOVE;
}

void ZoxRequest::publish() noexcept {
  if (published_.exchange(true) || !work_.publish || final_state_ != ZOX_REQUEST_DONE)
    return;
  begin_file_operation();
  work_.publish(outcome_);
  if (file_outcome().status > file_outcome_.status)
    file_outcome_ = file_outcome();
  final_state_ = judge();
}

void ZoxRequest::tell_end() noexcept {
  g_source_destroy(end_source_.get());
  latest_request() = std::move(latest_request_);
  set_file_outcome(std::move(file_outcome_));
  state_ = final_state_;
  if (options_.done != nullptr)
    options_.done(this, options_.userData);
  if (options_.destroy != nullptr)
    options_.destroy(options_.userData);
}

void ZoxRequest::progressed() noexcept {
  if (options_.progress == nullptr || progress_pending_.exchange(true))
    return;
  const OwnedSource source = make_source(tell_progress);
  order_before(this);
  g_source_attach(source.get(), context_.get());
}

gboolean ZoxRequest::tell_progress(gpointer data) noexcept {
  order_after(data);
  auto *request = static_cast<ZoxRequest *>(data);
  request->progress_pending_ = false;
  if (request->has_ended())
    return G_SOURCE_REMOVE;
  ZoxRequestProgress progress;
  zox_request_progress(request, &progress);
  request->options_.progress(request, &progress, request->options_.userData);
  return G_SOURCE_REMOVE;
}
