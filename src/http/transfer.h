/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The owner of one libcurl handle: one HTTP GET with the options that all requests share. */
#ifndef VELKOR_HTTP_TRANSFER_H
#define VELKOR_HTTP_TRANSFER_H

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <curl/curl.h>
#include <velkor/zox_http_curl.h>

#include "http/callbacks.h"
#include "support/owned.h"

namespace velkor {

/** No reply comes near this; a server that sends more is broken or hostile. */
inline constexpr size_t max_reply_size = size_t{256} << 20;

/** libcurl sets itself up unguarded at its first use; here only one thread does. Any thread. */
void set_up_transfers() noexcept;

/** An option that libcurl refuses makes perform() fail. */
class Transfer {
public:
  Transfer() noexcept;
  Transfer(const Transfer &) = delete;
  Transfer &operator=(const Transfer &) = delete;

  /** Whether there is a handle; without one nothing else may be called. */
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /** What failure_text() must not quote. */
  void keep_secret(std::string_view text) noexcept;

  /** `text` escaped for use in a URL. */
  [[nodiscard]] std::string escaped(std::string_view text) noexcept;

  void set_url(const std::string &url) noexcept { set(CURLOPT_URL, url.c_str()); }
  /** Servers must show a certificate of an authority in this PEM file, instead of the system's. */
  void trust_only(const std::string &ca_file) noexcept;
  /** Basic authentication; user and password are joined by a colon. */
  void set_credentials(const char *user_password) noexcept;
  void set_proxy(const char *host, long port) noexcept;
  void set_proxy_credentials(const char *user_password) noexcept;
  /** Has the function follow the transfer; the callback must live as long as this object. */
  void observe(const Callback<ZoxTransferCallback> &observer) noexcept;

  /**
   * Where the reply goes: into a text, or into the file of a descriptor. A decompressed reply of
   * more than `max_reply_size` bytes, or of `limit`, ends the transfer.
   */
  void receive_into(ZoxString *text) noexcept;
  void receive_into(int descriptor, size_t limit = max_reply_size) noexcept;

  [[nodiscard]] CURLcode perform() noexcept;

  /** libcurl's own message on why perform() gave `result`; a fixed one if it quotes a secret. */
  [[nodiscard]] std::string failure_text(CURLcode result) const noexcept;
  /** The system's error number when the file could not take all that came in; else 0. */
  [[nodiscard]] int write_error() const noexcept { return file_.error; }
  /** Whether the transfer was ended because the reply is too large. */
  [[nodiscard]] bool too_large() const noexcept { return too_large_; }
  /** The HTTP status of the reply; 0 without one. */
  [[nodiscard]] long http_status() const noexcept { return info<long>(CURLINFO_RESPONSE_CODE); }
  /** How long it took. */
  [[nodiscard]] double seconds() const noexcept { return info<double>(CURLINFO_TOTAL_TIME); }
  /** The bytes of the body as they came in, before decompression. */
  [[nodiscard]] curl_off_t received() const noexcept {
    return info<curl_off_t>(CURLINFO_SIZE_DOWNLOAD_T);
  }
  /** Whether it was the proxy that made perform() give `result`. */
  [[nodiscard]] bool proxy_failed(CURLcode result) const noexcept;

private:
  /** Where a file's content goes, how much more may, and what went wrong there. */
  struct File {
    int descriptor = -1;
    size_t room = 0;
    int error = 0;
  };
  /** Ends the transfer of a worker that must stop, and lets the observer end it. */
  static int follow(void *self, curl_off_t total, curl_off_t received, curl_off_t,
                    curl_off_t) noexcept;
  static size_t write_to_text(void *chunk, size_t size, size_t count, void *self) noexcept;
  static size_t write_to_file(void *chunk, size_t size, size_t count, void *self) noexcept;

  template <typename Value>
  [[nodiscard]] Value info(CURLINFO which) const noexcept {
    Value value{};
    curl_easy_getinfo(handle_.get(), which, &value);
    return value;
  }
  template <typename Value>
  void set(CURLoption option, Value value) noexcept {
    if (result_ == CURLE_OK)
      result_ = curl_easy_setopt(handle_.get(), option, value);
  }
  void set_common_options() noexcept;

  std::unique_ptr<CURL, ReleaseWith<curl_easy_cleanup>> handle_;
  CURLcode result_ = CURLE_OK;
  std::array<char, CURL_ERROR_SIZE> error_text_{};
  std::vector<std::string> secrets_;
  const Callback<ZoxTransferCallback> *observer_ = nullptr;
  bool through_proxy_ = false;
  bool too_large_ = false;
  ZoxString *text_ = nullptr;
  File file_;
};

}  // namespace velkor

#endif
