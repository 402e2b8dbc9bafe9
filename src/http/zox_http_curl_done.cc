/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the end of a transfer means: libcurl's results and the server's status words. */
#include <velkor/zox_http_curl.h>

#include <algorithm>
#include <array>

#include <curl/curl.h>
#include <velkor/zox_app_core.h>

#include "core/error_code.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/text.h"

namespace velkor {
namespace {

struct Failure {
  CURLcode transfer;
  ZoxErrorCode code;
};

constexpr std::array failures{
    Failure{CURLE_COULDNT_RESOLVE_PROXY, result::proxy_not_resolved},
    Failure{CURLE_COULDNT_RESOLVE_HOST, result::host_not_resolved},
    Failure{CURLE_COULDNT_CONNECT, result::not_connected},
    Failure{CURLE_WRITE_ERROR, result::send_failed},
    Failure{CURLE_SEND_ERROR, result::send_failed},
    Failure{CURLE_READ_ERROR, result::receive_failed},
    Failure{CURLE_RECV_ERROR, result::receive_failed},
    Failure{CURLE_OPERATION_TIMEDOUT, result::timed_out},
};

struct StatusWord {
  std::string_view word;
  ZoxErrorCode code;
};

constexpr std::array status_words{
    StatusWord{"UNAUTH", result::unauthorised},
    StatusWord{"BAN", result::banned},
    StatusWord{"Could not connect to the database", result::database_down},
    StatusWord{"UPD", result::update_required},
    StatusWord{"MSG", result::server_notice},
};

ZoxErrorCode code_of_failure(gint32 transfer_result) noexcept {
  const auto *failure = std::ranges::find_if(
      failures, [&](const Failure &each) { return gint32{each.transfer} == transfer_result; });
  return failure == failures.end() ? result::unknown_error : failure->code;
}

ZoxErrorCode code_of_body(std::string_view body, char **server_text) noexcept {
  const auto *status = std::ranges::find_if(
      status_words, [&](const StatusWord &each) { return body.starts_with(each.word); });
  if (status == status_words.end())
    return result::success;
  if (status->code == result::server_notice) {
    body.remove_prefix(status->word.size());
    hand_over(server_text, OwnedText(g_strndup(body.data(), body.size())));
  }
  return status->code;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" ZoxErrorCode zox_http_curl_done(gint32 transferResult, const ZoxString *body,
                                           char **serverText, gint32 requireData) {
  ZOX_ASSERT(core);
  if (transferResult != CURLE_OK)
    return code_of_failure(transferResult);
  if (view_of(body).empty() && requireData != 0)
    return result::no_data;
  return code_of_body(view_of(body), serverText);
}
