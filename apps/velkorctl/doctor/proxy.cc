/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The proxy, which is used when both its host and its port are set. */
#include <velkor/zox_app_core.h>

#include "velkorctl/doctor/examination.h"

namespace velkor::ctl::doctor {
namespace {

constexpr const char *subject = "proxy";

bool has_failed(const LibraryResult &answer) noexcept {
  constexpr gint32 no_address = 5;  // CURLE_COULDNT_RESOLVE_PROXY
  return answer.request &&
         (answer.request->proxy_failed || answer.request->transfer_result == no_address);
}

}  // namespace

Findings check_proxy(const Answers &answers) {
  const ZoxConfig &config = *core->config;
  const bool has_host = config.proxyHost != nullptr && config.proxyHost->len > 0;
  const bool has_port = config.proxyPort != nullptr && config.proxyPort->len > 0;
  if (!has_host && !has_port)
    return {{subject, "none is set"}};
  if (has_host != has_port)
    return {{subject,
             has_host ? "proxyHost is set without proxyPort, so that no proxy is used"
                      : "proxyPort is set without proxyHost, so that no proxy is used",
             "set both, or neither, with velkorctl config"}};
  const std::string name = std::string(config.proxyHost->str) + ":" + config.proxyPort->str;
  for (const LibraryResult *answer : {&answers.main, &answers.dumps})
    if (has_failed(*answer))
      return {{subject, name + " fails: " + answer->message(),
               "check proxyHost, proxyPort, proxyUser and proxyPassword with velkorctl config"}};
  return {{subject, name + " passes requests on"}};
}

}  // namespace velkor::ctl::doctor
