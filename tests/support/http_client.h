/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A plain HTTP client for tests: one request, everything about its reply. */
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
  /** Lets the body be decompressed on its way, as a gzip content encoding. */
  bool accept_gzip = false;
  std::vector<std::string> headers{};
  /** Gives up when less than this many seconds' worth of silence is enough; 0 for never. */
  long seconds = 0;
};

struct HttpReply {
  /** libcurl's result (a CURLcode); 0 for a complete reply. */
  int result = 0;
  long status = 0;
  std::string body;
  std::map<std::string, std::string> headers;  // names in lower case
};

/** Carries the request out and waits for its end. Follows no redirects. */
HttpReply send(const HttpRequest &request);

/** `path` with the parameters escaped behind it. */
std::string with_parameters(std::string path,
                            const std::vector<std::pair<std::string, std::string>> &parameters);

}  // namespace velkor::test

#endif
