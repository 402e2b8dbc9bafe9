/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The owner of one libcurl handle: one HTTP GET with the options that all requests share. */
#ifndef VELKOR_HTTP_TRANSFER_H
#define VELKOR_HTTP_TRANSFER_H

#include <memory>
#include <string>
#include <string_view>

#include <curl/curl.h>
#include <velkor/zox_http_curl.h>

#include "http/callbacks.h"
#include "support/owned.h"

namespace velkor {

/** An option that libcurl refuses makes perform() fail. */
class Transfer {
public:
  Transfer() noexcept;

  /** Whether there is a handle; without one nothing else may be called. */
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /** `text` escaped for use in a URL. */
  [[nodiscard]] std::string escaped(std::string_view text) noexcept;

  void set_url(const std::string &url) noexcept { set(CURLOPT_URL, url.c_str()); }
  /** Basic authentication; user and password are joined by a colon. */
  void set_credentials(const char *user_password) noexcept;
  void set_proxy(const char *host, long port) noexcept;
  void set_proxy_credentials(const char *user_password) noexcept;
  /** Has the function follow the transfer; the callback must live as long as this object. */
  void observe(const Callback<ZoxTransferCallback> &observer) noexcept;

  /** Where the reply goes: into a text, or into the file of a descriptor. */
  void receive_into(ZoxString *text) noexcept;
  void receive_into(int *descriptor) noexcept;

  [[nodiscard]] CURLcode perform() noexcept;

private:
  template <typename Value>
  void set(CURLoption option, Value value) noexcept {
    if (result_ == CURLE_OK)
      result_ = curl_easy_setopt(handle_.get(), option, value);
  }
  void set_common_options() noexcept;

  std::unique_ptr<CURL, ReleaseWith<curl_easy_cleanup>> handle_;
  CURLcode result_ = CURLE_OK;
};

}  // namespace velkor

#endif
