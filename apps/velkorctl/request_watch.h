/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What is known of a request that failed while an operation of the library ran. */
#ifndef VELKORCTL_REQUEST_WATCH_H
#define VELKORCTL_REQUEST_WATCH_H

#include <chrono>
#include <optional>
#include <string>

#include <velkor/zox_types.h>

namespace velkor::ctl {

/** A copy of the library's record. */
struct RequestFailure {
  ZoxErrorCode code = 0;
  gint32 transfer_result = 0;
  gint32 http_status = 0;
  bool proxy_failed = false;
  std::string host{};
  std::string path{};
  std::string text{};

  bool operator==(const RequestFailure &other) const = default;

  /** Whether the server itself reported an error, whatever its reply holds. */
  [[nodiscard]] bool refused() const noexcept;
  /** The host, then the HTTP status and the reason as far as there are any. */
  [[nodiscard]] std::string words() const;
};

/** From now on a transfer is given up when it brings nothing for longer than that; 0 for never. */
void set_inactivity_limit(std::chrono::seconds limit) noexcept;

/**
 * To be called by every transfer that runs, so that RequestWatch sees it.
 * @param received  the bytes that it has brought so far
 * @return non-zero, which stops the transfer, when SIGINT, SIGTERM or SIGHUP has arrived or the
 *         server is silent
 */
gint note_transfer(gint64 received) noexcept;

/**
 * Tells the failures of its own time from earlier ones: an operation that sends no request leaves
 * the library's record of the one before.
 */
class RequestWatch {
public:
  RequestWatch();

  /** The latest request, if there has been one since the watch began and it failed. */
  [[nodiscard]] std::optional<RequestFailure> failure() const;

private:
  std::optional<RequestFailure> earlier_;
  unsigned transfers_;
};

}  // namespace velkor::ctl

#endif
