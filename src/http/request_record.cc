/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/request_record.h"

#include <memory>

#include <curl/curl.h>

#include "support/owned.h"

namespace velkor {
namespace {

using Address = std::unique_ptr<CURLU, ReleaseWith<curl_url_cleanup>>;

/** One part of an address; empty when it has none. */
std::string part_of(const Address &address, CURLUPart part) noexcept {
  char *text = nullptr;
  curl_url_get(address.get(), part, &text, 0);
  const std::unique_ptr<char, ReleaseWith<curl_free>> owned(text);
  return text == nullptr ? std::string() : text;
}

ZoxHttpFailure shown(const RequestRecord &record) noexcept {
  return {.code = record.code,
          .transferResult = record.transfer_result,
          .httpStatus = record.http_status,
          .proxyFailed = record.proxy_failed ? 1 : 0,
          .received = record.received,
          .host = record.host.c_str(),
          .path = record.path.c_str(),
          .text = record.reason.c_str()};
}

}  // namespace

RequestRecord &latest_request() noexcept {
  thread_local RequestRecord record;
  return record;
}

RequestRecord new_record(const std::string &address) noexcept {
  RequestRecord record;
  const Address parts(curl_url());
  // Only the parts that are asked for come out: user, password and query stay behind.
  if (!parts || curl_url_set(parts.get(), CURLUPART_URL, address.c_str(),
                             CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK)
    return record;
  record.host = part_of(parts, CURLUPART_HOST);
  if (const std::string port = part_of(parts, CURLUPART_PORT); !port.empty())
    record.host += ":" + port;
  record.path = part_of(parts, CURLUPART_PATH);
  return record;
}

}  // namespace velkor

using namespace velkor;

extern "C" const ZoxHttpFailure *zox_http_last_failure(void) {
  thread_local ZoxHttpFailure failure;
  const RequestRecord &record = latest_request();
  if (record.reason.empty())
    return nullptr;
  failure = shown(record);
  return &failure;
}
