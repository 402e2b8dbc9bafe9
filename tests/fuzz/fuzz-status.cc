/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* How a reply is received, what its status word means, and the sentence for the user. However the
 * reply is cut into pieces, the same arrives. */
#include <algorithm>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_curl.h>

#include "support/owned.h"
#include "support/text.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/session.h"
#include "tests/fuzz/transfers.h"

namespace velkor::fuzz {
namespace {

struct Received {
  ZoxErrorCode code;
  std::string text;
  bool operator==(const Received &) const = default;
};

Received receive(const std::string &body, std::size_t piece_size, bool require_data) {
  answer_requests([&body](const std::string &) { return body; }, piece_size);
  ZoxString *place = nullptr;
  const ZoxErrorCode code =
      zox_http_curl_execute("/3.7.3/xml.php", nullptr, 1, &place, 1, nullptr, require_data ? 1 : 0);
  const OwnedString text(place);
  require(text != nullptr, "a reply is handed on");
  return {code, std::string(view_of(text.get()))};
}

ZoxErrorCode code_of(ZoxStatusWord word) {
  switch (word) {
  case ZOX_STATUS_WORD_UNAUTH:
    return ZOX_RESULT_UNAUTHORIZED;
  case ZOX_STATUS_WORD_BAN:
    return ZOX_RESULT_BANNED;
  case ZOX_STATUS_WORD_DATABASE:
    return ZOX_RESULT_DATABASE_DOWN;
  case ZOX_STATUS_WORD_UPD:
    return ZOX_RESULT_UPDATE_REQUIRED;
  case ZOX_STATUS_WORD_MSG:
    return ZOX_RESULT_SERVER_NOTICE;
  case ZOX_STATUS_WORD_NONE:
    break;
  }
  return ZOX_RESULT_SUCCESS;
}

void check(const Received &received, const std::string &body, bool require_data) {
  const ZoxStatusWord word = zox_http_status_word(body.c_str());
  if (body.empty() && require_data)
    require(received.code == ZOX_RESULT_NO_DATA, "an empty reply is no data");
  else
    require(received.code == code_of(word), "the result is that of the status word");
  const std::string expected = word == ZOX_STATUS_WORD_MSG ? body.substr(3) : body;
  require(received.text == expected, "the text arrives, and a notice without its word");
}

void check_sentence(ZoxErrorCode code, const std::string &text) {
  const OwnedText sentence(zox_error_msg(code, text.c_str()));
  if (code == ZOX_RESULT_SERVER_NOTICE)
    require(sentence != nullptr && std::string_view(sentence.get()).find(text) != std::string::npos,
            "a notice is told word for word");
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  fuzz::reset_settings();
  fuzz::Input input(data, size);
  const bool require_data = input.flag();
  const std::size_t piece_size = 1 + input.byte();
  const std::string body = input.text();
  const fuzz::Received whole = fuzz::receive(body, body.size() + 1, require_data);
  fuzz::check(whole, body, require_data);
  fuzz::require(fuzz::receive(body, piece_size, require_data) == whole,
                "a reply in pieces is the same reply");
  fuzz::check_sentence(whole.code, whole.text);
  // What follows a zero byte is lost with the rest of its piece, and nothing else is.
  fuzz::receive(body + '\0' + std::string(input.rest()), piece_size, require_data);
  return 0;
}
