/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the end of a transfer means: libcurl's results and the server's status words. */
#include <velkor/zox_http_curl.h>

#include <algorithm>
#include <array>

#include <curl/curl.h>
#include <velkor/zox_app_core.h>

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
    Failure{CURLE_COULDNT_RESOLVE_PROXY, ZOX_RESULT_PROXY_NOT_RESOLVED},
    Failure{CURLE_COULDNT_RESOLVE_HOST, ZOX_RESULT_HOST_NOT_RESOLVED},
    Failure{CURLE_COULDNT_CONNECT, ZOX_RESULT_NOT_CONNECTED},
    Failure{CURLE_WRITE_ERROR, ZOX_RESULT_SEND_FAILED},
    Failure{CURLE_SEND_ERROR, ZOX_RESULT_SEND_FAILED},
    Failure{CURLE_READ_ERROR, ZOX_RESULT_RECEIVE_FAILED},
    Failure{CURLE_RECV_ERROR, ZOX_RESULT_RECEIVE_FAILED},
    Failure{CURLE_OPERATION_TIMEDOUT, ZOX_RESULT_TIMED_OUT},
};

struct StatusWord {
  std::string_view text;
  ZoxStatusWord word;
  ZoxErrorCode code;
};

constexpr std::array status_words{
    StatusWord{"UNAUTH", ZOX_STATUS_WORD_UNAUTH, ZOX_RESULT_UNAUTHORIZED},
    StatusWord{"BAN", ZOX_STATUS_WORD_BAN, ZOX_RESULT_BANNED},
    StatusWord{"Could not connect to the database", ZOX_STATUS_WORD_DATABASE,
               ZOX_RESULT_DATABASE_DOWN},
    StatusWord{"UPD", ZOX_STATUS_WORD_UPD, ZOX_RESULT_UPDATE_REQUIRED},
    StatusWord{"MSG", ZOX_STATUS_WORD_MSG, ZOX_RESULT_SERVER_NOTICE},
};

ZoxErrorCode code_of_failure(gint32 transfer_result) noexcept {
  const auto *failure = std::ranges::find_if(
      failures, [&](const Failure &each) { return gint32{each.transfer} == transfer_result; });
  return failure == failures.end() ? ZoxErrorCode{ZOX_RESULT_UNKNOWN_ERROR} : failure->code;
}

/** The status word that the body begins with, or null when it is data. */
const StatusWord *find_status_word(std::string_view body) noexcept {
  const auto *status = std::ranges::find_if(
      status_words, [&](const StatusWord &each) { return body.starts_with(each.text); });
  return status == status_words.end() ? nullptr : status;
}

ZoxErrorCode code_of_body(std::string_view body, char **server_text) noexcept {
  const StatusWord *status = find_status_word(body);
  if (status == nullptr)
    return ZOX_RESULT_SUCCESS;
  if (status->word == ZOX_STATUS_WORD_MSG) {
    body.remove_prefix(status->text.size());
    hand_over(server_text, OwnedText(g_strndup(body.data(), body.size())));
  }
  return status->code;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_http_curl_done(gint32 transferResult, const ZoxString *body, char **serverText,
                                gint32 requireData) {
  ZOX_ASSERT(core);
  if (transferResult != CURLE_OK)
    return code_of_failure(transferResult);
  if (view_of(body).empty() && requireData != 0)
    return ZOX_RESULT_NO_DATA;
  return code_of_body(view_of(body), serverText);
}

ZoxStatusWord zox_http_status_word(const char *body) {
  const StatusWord *status = find_status_word(body);
  return status == nullptr ? ZOX_STATUS_WORD_NONE : status->word;
}

}  // extern "C"
