/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A simple HTTP client for tests: sends one request and returns its whole reply. */
#ifndef VELKOR_TESTS_SUPPORT_HTTP_CLIENT_H
#define VELKOR_TESTS_SUPPORT_HTTP_CLIENT_H

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace velkor::test {

struct HttpRequest {
  std::string url;
  std::string method = "GET";
  /** "NAME:SECRET" for basic authentication, empty for none. */
  std::string credentials{};
  /** "HOST:PORT" of a proxy and its "NAME:PASSWORD", empty for none. */
  std::string proxy{};
  std::string proxy_credentials{};
  /** Accepts a body with the content encoding gzip, and decompresses it. */
  bool accept_gzip = false;
  std::vector<std::string> headers{};
  /** The certificate authorities to trust over HTTPS, empty for those of the system. */
  std::string ca_file{};
  /** The timeout of the whole request; 0 for none. */
  long seconds = 0;
};

struct HttpReply {
  /** libcurl's result (a CURLcode); 0 for a complete reply. */
  int result = 0;
  long status = 0;
  std::string body;
  std::map<std::string, std::string> headers;  // names in lower case
};

/** Sends the request and waits for the reply. Does not follow redirects. */
HttpReply send(const HttpRequest &request);

/** `path` followed by the escaped parameters as its query. */
std::string with_parameters(std::string path,
                            const std::vector<std::pair<std::string, std::string>> &parameters);

}  // namespace velkor::test

#endif
