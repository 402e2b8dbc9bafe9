/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/http_client.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <stdexcept>

#include <curl/curl.h>

namespace velkor::test {
namespace {

struct Cleanup {
  void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
  void operator()(curl_slist *list) const { curl_slist_free_all(list); }
  void operator()(char *text) const { curl_free(text); }
};
using Handle = std::unique_ptr<CURL, Cleanup>;
using HeaderList = std::unique_ptr<curl_slist, Cleanup>;

std::size_t append_body(char *data, std::size_t size, std::size_t count, void *body) {
  static_cast<std::string *>(body)->append(data, size * count);
  return size * count;
}

std::size_t note_header(char *data, std::size_t size, std::size_t count, void *headers) {
  std::string line(data, size * count);
  const std::size_t colon = line.find(": ");
  if (colon != std::string::npos) {
    std::string name = line.substr(0, colon);
    std::ranges::transform(name, name.begin(), [](unsigned char letter) {
      return static_cast<char>(std::tolower(letter));
    });
    (*static_cast<std::map<std::string, std::string> *>(headers))[name] =
        line.substr(colon + 2, line.find_first_of("\r\n") - colon - 2);
  }
  return size * count;
}

void set(CURL *curl, CURLoption option, const std::string &text) {
  if (!text.empty())
    curl_easy_setopt(curl, option, text.c_str());
}

HeaderList list_of(const std::vector<std::string> &headers) {
  HeaderList list;
  for (const std::string &header : headers)
    list.reset(curl_slist_append(list.release(), header.c_str()));
  return list;
}

void prepare(CURL *curl, const HttpRequest &request) {
  set(curl, CURLOPT_URL, request.url);
  set(curl, CURLOPT_USERPWD, request.credentials);
  set(curl, CURLOPT_PROXY, request.proxy.empty() ? request.proxy : "http://" + request.proxy);
  set(curl, CURLOPT_PROXYUSERPWD, request.proxy_credentials);
  // Loopback is reached directly, whatever proxy the environment names.
  if (request.proxy.empty())
    curl_easy_setopt(curl, CURLOPT_PROXY, "");
  else
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "");
  if (request.method == "HEAD")
    curl_easy_setopt(curl, CURLOPT_NOBODY, 1L);
  else
    set(curl, CURLOPT_CUSTOMREQUEST, request.method);
  set(curl, CURLOPT_CAINFO, request.ca_file);
  if (request.accept_gzip)
    curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, "gzip");
  curl_easy_setopt(curl, CURLOPT_TIMEOUT, request.seconds);
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
}

}  // namespace

HttpReply send(const HttpRequest &request) {
  const Handle curl(curl_easy_init());
  if (!curl)
    throw std::runtime_error("cannot start libcurl");
  HttpReply reply;
  const HeaderList headers = list_of(request.headers);
  prepare(curl.get(), request);
  curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers.get());
  curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, append_body);
  curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, &reply.body);
  curl_easy_setopt(curl.get(), CURLOPT_HEADERFUNCTION, note_header);
  curl_easy_setopt(curl.get(), CURLOPT_HEADERDATA, &reply.headers);
  reply.result = curl_easy_perform(curl.get());
  curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &reply.status);
  return reply;
}

std::string with_parameters(std::string path,
                            const std::vector<std::pair<std::string, std::string>> &parameters) {
  char separator = '?';
  for (const auto &[name, value] : parameters) {
    const std::unique_ptr<char, Cleanup> escaped(
        curl_easy_escape(nullptr, value.c_str(), static_cast<int>(value.size())));
    path += separator + name + "=" + escaped.get();
    separator = '&';
  }
  return path;
}

}  // namespace velkor::test
