/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What is known of a request beside its code, for when it fails. */
#ifndef VELKOR_HTTP_REQUEST_RECORD_H
#define VELKOR_HTTP_REQUEST_RECORD_H

#include <string>

#include <velkor/zox_http_curl.h>

namespace velkor {

/** The texts hold no secret: neither credentials nor the query of an address. */
struct RequestRecord {
  ZoxErrorCode code = ZOX_RESULT_SUCCESS;
  gint32 transfer_result = 0;
  gint32 http_status = 0;
  bool proxy_failed = false;
  gint64 received = 0;
  std::string host;
  std::string path;
  /** Why it failed; empty when it did not. */
  std::string reason;
};

/** The record of this thread's latest request. */
RequestRecord &latest_request() noexcept;

/** A record that knows where the request goes and nothing else. */
RequestRecord new_record(const std::string &address) noexcept;

}  // namespace velkor

#endif
