/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/request.h"

#include <memory>
#include <utility>

namespace velkor::app {
namespace {

void on_progress(ZoxRequest * /*request*/, const ZoxRequestProgress *progress,
                 gpointer functions) noexcept {
  if (const auto &follow = static_cast<RequestFunctions *>(functions)->progress)
    follow(*progress);
}

void on_done(ZoxRequest *request, gpointer functions) noexcept {
  static_cast<RequestFunctions *>(functions)->done(*request);
}

void release(gpointer functions) noexcept {
  const std::unique_ptr<RequestFunctions> owned(static_cast<RequestFunctions *>(functions));
}

}  // namespace

void start_request(GMainContext *context, Cancellation &wanted, const RequestStart &start,
                   RequestFunctions functions) {
  auto owned = std::make_unique<RequestFunctions>(std::move(functions));
  const ZoxRequestOptions options{context, on_progress, on_done, owned.release(), release};
  const std::shared_ptr<ZoxRequest> request(start(&options), zox_request_unref);
  wanted.set_stop([request] { zox_request_cancel(request.get()); });
}

RequestEnd unless_cancelled(RequestEnd end) {
  return [end = std::move(end)](const ZoxRequest &request) {
    if (zox_request_state(&request) != ZOX_REQUEST_CANCELLED)
      end(request);
  };
}

CallResult result_of(const ZoxRequest &request) {
  if (zox_request_state(&request) == ZOX_REQUEST_DONE)
    return {};
  return call_result(zox_request_code(&request), zox_request_message(&request));
}

}  // namespace velkor::app
