/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/fuzz/transfers.h"

#include <algorithm>
#include <cstdarg>
#include <utility>

#include <curl/curl.h>
#include <gmodule.h>

namespace velkor::fuzz {
namespace {

/** As the library declares its functions that receive a reply. */
using Write = std::size_t (*)(void *chunk, std::size_t size, std::size_t count, void *data);

/** What the library has asked for last, and how it is answered. */
struct Transfers {
  Answer answer;
  std::size_t piece_size = 1;
  std::size_t count = 0;
  std::string url;
  Write write = nullptr;
  void *write_data = nullptr;
};

Transfers &transfers() {
  static Transfers transfers;
  return transfers;
}

CURLcode deliver(std::string body) {
  const Transfers &to = transfers();
  for (std::size_t begin = 0; begin < body.size(); begin += to.piece_size) {
    const std::size_t length = std::min(to.piece_size, body.size() - begin);
    if (to.write(body.data() + begin, 1, length, to.write_data) != length)
      return CURLE_WRITE_ERROR;
  }
  return CURLE_OK;
}

}  // namespace

void answer_requests(Answer answer, std::size_t piece_size) {
  transfers() = {};
  transfers().answer = std::move(answer);
  transfers().piece_size = piece_size;
}

std::size_t request_count() {
  return transfers().count;
}

}  // namespace velkor::fuzz

// The linker gives the library these for libcurl's own. The names are the linker's.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl50-cpp)
extern "C" {

CURLcode __wrap_curl_easy_setopt(CURL *handle, int option, ...);
CURLcode __wrap_curl_easy_perform(CURL *handle);
GModule *__wrap_g_module_open(const gchar *file, GModuleFlags flags);
GModule *__real_g_module_open(const gchar *file, GModuleFlags flags);

CURLcode __wrap_curl_easy_setopt(CURL * /*handle*/, int option, ...) {
  velkor::fuzz::Transfers &transfers = velkor::fuzz::transfers();
  va_list arguments;
  va_start(arguments, option);
  if (option == CURLOPT_URL)
    transfers.url = va_arg(arguments, const char *);
  else if (option == CURLOPT_WRITEFUNCTION)
    transfers.write = va_arg(arguments, velkor::fuzz::Write);
  else if (option == CURLOPT_WRITEDATA)
    transfers.write_data = va_arg(arguments, void *);
  va_end(arguments);
  return CURLE_OK;
}

CURLcode __wrap_curl_easy_perform(CURL * /*handle*/) {
  velkor::fuzz::Transfers &transfers = velkor::fuzz::transfers();
  ++transfers.count;
  std::optional<std::string> body = transfers.answer(transfers.url);
  return body ? velkor::fuzz::deliver(*std::move(body)) : CURLE_COULDNT_CONNECT;
}

/** The program itself is the authentication plug-in. */
GModule *__wrap_g_module_open(const gchar * /*file*/, GModuleFlags flags) {
  return __real_g_module_open(nullptr, flags);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl50-cpp)
