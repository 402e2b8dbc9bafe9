/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/transfer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <mutex>

#include <unistd.h>

#include "support/assertion.h"

namespace velkor {
namespace {

/** libcurl sets itself up unguarded when the first handle is made; here only one thread does. */
CURL *new_handle() noexcept {
  static std::once_flag once;
  std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
  return curl_easy_init();
}

/** No reply comes near this; a server that sends more is broken or hostile. */
constexpr size_t max_reply_size = size_t{256} << 20;

int report_progress(void *observer, curl_off_t total, curl_off_t received, curl_off_t, curl_off_t) {
  const auto *callback = static_cast<const Callback<ZoxTransferCallback> *>(observer);
  return callback->function(received, total, callback->data);
}

}  // namespace

Transfer::Transfer() noexcept : handle_(new_handle()) {
  if (handle_)
    set_common_options();
}

void Transfer::set_common_options() noexcept {
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_FOLLOWLOCATION, 0L);
  set(CURLOPT_NOPROGRESS, 1L);
  set(CURLOPT_ACCEPT_ENCODING, "gzip");
  set(CURLOPT_USERAGENT, "Velkor 1.0 Beta 5 (Linux)");
  set(CURLOPT_CONNECTTIMEOUT, 20L);
  set(CURLOPT_NOSIGNAL, 1L);
  // The settings alone decide on a proxy: without these, the environment would have a say.
  set(CURLOPT_PROXY, "");
  set(CURLOPT_NOPROXY, "");
}

std::string Transfer::escaped(std::string_view text) noexcept {
  const std::unique_ptr<char, ReleaseWith<curl_free>> result(
      curl_easy_escape(handle_.get(), text.data(), static_cast<int>(text.size())));
  if (result)
    return result.get();
  result_ = CURLE_URL_MALFORMAT;  // longer than any address may be
  return {};
}

void Transfer::set_credentials(const char *user_password) noexcept {
  set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
  set(CURLOPT_USERPWD, user_password);
}

void Transfer::set_proxy(const char *host, long port) noexcept {
  set(CURLOPT_PROXY, host);
  set(CURLOPT_PROXYPORT, port);
}

void Transfer::set_proxy_credentials(const char *user_password) noexcept {
  set(CURLOPT_PROXYUSERPWD, user_password);
}

void Transfer::observe(const Callback<ZoxTransferCallback> &observer) noexcept {
  set(CURLOPT_XFERINFOFUNCTION, report_progress);
  set(CURLOPT_XFERINFODATA, &observer);
  set(CURLOPT_NOPROGRESS, 0L);
}

void Transfer::receive_into(ZoxString *text) noexcept {
  set(CURLOPT_WRITEFUNCTION, zox_curl_write_function);
  set(CURLOPT_WRITEDATA, text);
}

void Transfer::receive_into(int *descriptor) noexcept {
  set(CURLOPT_WRITEFUNCTION, zox_curl_file_write_function);
  set(CURLOPT_WRITEDATA, descriptor);
}

CURLcode Transfer::perform() noexcept {
  return result_ == CURLE_OK ? curl_easy_perform(handle_.get()) : result_;
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
  const ssize_t written = write(*static_cast<const int *>(fp), chunk, length);
  if (written < 0 || static_cast<size_t>(written) < length)
    std::printf("write(): error = %s (%i)", g_strerror(errno), errno);
  return length;
}

}  // extern "C"
