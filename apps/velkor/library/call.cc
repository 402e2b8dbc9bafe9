/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/call.h"

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_curl.h>

#include "model/shown_text.h"
#include "support/owned.h"

namespace velkor::app {
namespace {

/** Host and reason, which tell a refused account from a server that is down. */
std::string why() {
  const ZoxHttpFailure *failure = zox_http_last_failure();
  if (failure == nullptr || failure->text == nullptr || failure->text[0] == '\0')
    return "";
  const std::string host = failure->host == nullptr ? "" : failure->host;
  return " (" + (host.empty() ? "" : host + ": ") + failure->text + ")";
}

std::string without_line_feeds(std::string text) {
  while (text.ends_with('\n'))
    text.pop_back();
  return text;
}

}  // namespace

CallResult call_result(ZoxErrorCode code, const char *server_text) {
  if (code == ZOX_RESULT_SUCCESS)
    return {};
  const OwnedText sentence(zox_error_msg(code, server_text));
  std::string message = without_line_feeds(sentence.get());
  if (code != ZOX_RESULT_SERVER_NOTICE)
    message += why();
  return {code, shown_lines(message)};
}

}  // namespace velkor::app
