/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/request_watch.h"

#include <velkor/zox_http_curl.h>

#include "velkorctl/inactivity.h"
#include "velkorctl/interruption.h"

namespace velkor::ctl {
namespace {

constexpr gint32 first_error_status = 400;

/** How often note_transfer() was called on this thread. */
thread_local unsigned transfers = 0;

constinit thread_local Inactivity inactivity{std::chrono::seconds::zero()};
/** Whether the latest transfer of this thread was given up because the server was silent. */
thread_local bool given_up = false;

std::string reason_of(const ZoxHttpFailure &record) {
  if (!given_up)
    return record.text;
  return "nothing has arrived for " + std::to_string(inactivity.limit().count()) + " s";
}

std::optional<RequestFailure> last_failure() {
  const ZoxHttpFailure *record = zox_http_last_failure();
  if (record == nullptr)
    return std::nullopt;
  return RequestFailure{.code = record->code,
                        .transfer_result = record->transferResult,
                        .http_status = record->httpStatus,
                        .proxy_failed = record->proxyFailed != 0,
                        .host = record->host,
                        .path = record->path,
                        .text = reason_of(*record)};
}

}  // namespace

bool RequestFailure::refused() const noexcept {
  return http_status >= first_error_status;
}

std::string RequestFailure::words() const {
  std::string reason;
  if (refused())
    reason = "HTTP status " + std::to_string(http_status);
  // The library's sentence for the code says what a status word or an empty reply means.
  const bool answered = transfer_result == 0 && http_status != 0;
  if (!answered || (code == ZOX_RESULT_SUCCESS && !refused()))
    reason += (reason.empty() ? "" : ", ") + text;
  std::string result = host;
  if (proxy_failed)
    result += " through the proxy";
  if (!result.empty() && !reason.empty())
    result += ": ";
  return result + reason;
}

void set_inactivity_limit(std::chrono::seconds limit) noexcept {
  inactivity = Inactivity(limit);
}

gint note_transfer(gint64 received) noexcept {
  ++transfers;
  given_up = inactivity.exceeded(received, Inactivity::Clock::now());
  return Interruption::requested() || given_up ? 1 : 0;
}

RequestWatch::RequestWatch() : earlier_(last_failure()), transfers_(transfers) {}

std::optional<RequestFailure> RequestWatch::failure() const {
  std::optional<RequestFailure> latest = last_failure();
  const bool old = transfers == transfers_ && latest == earlier_;
  return old ? std::nullopt : latest;
}

}  // namespace velkor::ctl
