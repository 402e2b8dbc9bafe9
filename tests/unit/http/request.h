/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A request as a value, for tests that vary one thing at a time. */
#ifndef VELKOR_TESTS_UNIT_HTTP_REQUEST_H
#define VELKOR_TESTS_UNIT_HTTP_REQUEST_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <velkor/zox_http_curl.h>
#include <velkor/zox_http_parameter.h>

#include "support/owned.h"

namespace velkor::test {

/** What a request came to. */
struct Outcome {
  ZoxErrorCode code;
  std::optional<std::string> reply;
  std::optional<std::string> file;  // the path of the temporary file
};

struct Request {
  std::string path = "/3.7.3/xml.php";
  std::vector<std::pair<std::string, std::string>> parameters{};
  bool use_host = true;
  bool authenticate = false;
  bool into_file = false;
  bool require_data = true;

  [[nodiscard]] Outcome execute() const {
    GSList *list = nullptr;
    for (const auto &[name, value] : parameters)
      list = g_slist_append(list, zox_http_parameter_new(name.c_str(), value.c_str()));
    ZoxString *reply = nullptr;
    char *file = nullptr;
    const ZoxErrorCode code =
        zox_http_curl_execute(path.c_str(), list, use_host ? 1 : 0, &reply, authenticate ? 1 : 0,
                              into_file ? &file : nullptr, require_data ? 1 : 0);
    zox_http_parameter_free_all(list);
    Outcome outcome{code, std::nullopt, std::nullopt};
    if (const OwnedString owned{reply})
      outcome.reply.emplace(owned->str, owned->len);
    if (const OwnedText owned{file})
      outcome.file = owned.get();
    return outcome;
  }
};

}  // namespace velkor::test

#endif
