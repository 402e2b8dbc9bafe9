/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/transfer.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <mutex>

#include <unistd.h>

#include "http/workers.h"
#include "support/assertion.h"

namespace velkor {
namespace {

CURL *new_handle() noexcept {
  set_up_transfers();
  return curl_easy_init();
}

/** Writes a chunk; what cannot be written is lost. Gives the system's error number, or 0. */
int write_chunk(int descriptor, const void *chunk, size_t length) noexcept {
  const ssize_t written = write(descriptor, chunk, length);
  const int error = errno;
  if (written >= 0 && static_cast<size_t>(written) == length)
    return 0;
  std::printf("write(): error = %s (%i)", g_strerror(error), error);
  return written < 0 ? error : ENOSPC;
}

}  // namespace

void set_up_transfers() noexcept {
  static std::once_flag once;
  std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

Transfer::Transfer() noexcept : handle_(new_handle()) {
  if (handle_)
    set_common_options();
}

void Transfer::set_common_options() noexcept {
  set(CURLOPT_ERRORBUFFER, error_text_.data());
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_FOLLOWLOCATION, 0L);
  set(CURLOPT_XFERINFOFUNCTION, follow);
  set(CURLOPT_XFERINFODATA, this);
  set(CURLOPT_NOPROGRESS, is_worker() ? 0L : 1L);
  set(CURLOPT_ACCEPT_ENCODING, "gzip");
  set(CURLOPT_USERAGENT, "Velkor 1.0 Beta 5 (Linux)");
  set(CURLOPT_CONNECTTIMEOUT, 20L);
  set(CURLOPT_NOSIGNAL, 1L);
  // The settings alone decide on a proxy: without these, the environment would count as well.
  set(CURLOPT_PROXY, "");
  set(CURLOPT_NOPROXY, "");
}

void Transfer::keep_secret(std::string_view text) noexcept {
  if (!text.empty())
    secrets_.emplace_back(text);
}

std::string Transfer::escaped(std::string_view text) noexcept {
  const std::unique_ptr<char, ReleaseWith<curl_free>> result(
      curl_easy_escape(handle_.get(), text.data(), static_cast<int>(text.size())));
  if (result)
    return result.get();
  result_ = CURLE_URL_MALFORMAT;  // longer than any address may be
  return {};
}

void Transfer::trust_only(const std::string &ca_file) noexcept {
  set(CURLOPT_CAINFO, ca_file.c_str());
  set(CURLOPT_CAPATH, static_cast<const char *>(nullptr));
}

void Transfer::set_credentials(const char *user_password) noexcept {
  set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
  set(CURLOPT_USERPWD, user_password);
}

void Transfer::set_proxy(const char *host, long port) noexcept {
  set(CURLOPT_PROXY, host);
  set(CURLOPT_PROXYPORT, port);
  through_proxy_ = *host != '\0';
}

void Transfer::set_proxy_credentials(const char *user_password) noexcept {
  set(CURLOPT_PROXYUSERPWD, user_password);
}

void Transfer::observe(const Callback<ZoxTransferCallback> &observer) noexcept {
  observer_ = &observer;
  set(CURLOPT_NOPROGRESS, 0L);
}

int Transfer::follow(void *self, curl_off_t total, curl_off_t received, curl_off_t,
                     curl_off_t) noexcept {
  if (worker_must_stop())
    return 1;
  const auto *observer = static_cast<const Transfer *>(self)->observer_;
  return observer == nullptr ? 0 : observer->function(received, total, observer->data);
}

void Transfer::receive_into(ZoxString *text) noexcept {
  text_ = text;
  set(CURLOPT_WRITEFUNCTION, write_to_text);
  set(CURLOPT_WRITEDATA, this);
}

void Transfer::receive_into(int descriptor, size_t limit) noexcept {
  file_ = {.descriptor = descriptor, .room = limit};
  set(CURLOPT_WRITEFUNCTION, write_to_file);
  set(CURLOPT_WRITEDATA, this);
}

size_t Transfer::write_to_text(void *chunk, size_t size, size_t count, void *self) noexcept {
  auto *transfer = static_cast<Transfer *>(self);
  const size_t taken = zox_curl_write_function(chunk, size, count, transfer->text_);
  transfer->too_large_ = taken != size * count;
  return taken;
}

size_t Transfer::write_to_file(void *chunk, size_t size, size_t count, void *self) noexcept {
  auto *transfer = static_cast<Transfer *>(self);
  File &target = transfer->file_;
  const size_t length = size * count;
  transfer->too_large_ = length > target.room;
  if (transfer->too_large_)
    return 0;
  target.room -= length;
  if (const int error = write_chunk(target.descriptor, chunk, length); error != 0)
    target.error = error;
  return length;
}

CURLcode Transfer::perform() noexcept {
  return result_ == CURLE_OK ? curl_easy_perform(handle_.get()) : result_;
}

std::string Transfer::failure_text(CURLcode result) const noexcept {
  const std::string_view text = error_text_.data();
  const bool quotes_secret = std::ranges::any_of(secrets_, [text](const std::string &secret) {
    return text.find(secret) != std::string_view::npos;
  });
  return std::string(text.empty() || quotes_secret ? curl_easy_strerror(result) : text);
}

bool Transfer::proxy_failed(CURLcode result) const noexcept {
  constexpr long authentication_required = 407;
  constexpr long first_error = 400;
  if (!through_proxy_)
    return false;
  switch (result) {
  // Every connection is one with the proxy.
  case CURLE_COULDNT_RESOLVE_PROXY:
  case CURLE_COULDNT_CONNECT:
  case CURLE_PROXY:
    return true;
  case CURLE_OPERATION_TIMEDOUT:
    return info<curl_off_t>(CURLINFO_CONNECT_TIME_T) == 0;
  default:
    return http_status() == authentication_required ||
           info<long>(CURLINFO_HTTP_CONNECTCODE) >= first_error;
  }
}

}  // namespace velkor

using namespace velkor;

extern "C" {

size_t zox_curl_write_function(void *chunk, size_t size, size_t count, void *data) {
  ZOX_ASSERT(data);
  auto *text = static_cast<ZoxString *>(data);
  const size_t length = size * count;
  if (length > max_reply_size || text->len > max_reply_size - length)
    return 0;
  const char *bytes = static_cast<const char *>(chunk);
  g_string_append_len(text, bytes, static_cast<gssize>(strnlen(bytes, length)));
  return length;
}

size_t zox_curl_file_write_function(void *chunk, size_t size, size_t count, void *fp) {
  ZOX_ASSERT(fp);
  const size_t length = size * count;
  write_chunk(*static_cast<const int *>(fp), chunk, length);
  return length;
}

}  // extern "C"
