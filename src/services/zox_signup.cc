/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Creating an account. */
#include <velkor/zox_signup.h>

#include <array>

#include "http/service_request.h"

namespace velkor {
namespace {

struct Answer {
  std::string_view word;
  ZoxErrorCode code;
};

constexpr auto answers = std::to_array<Answer>({{"OK", ZOX_RESULT_SUCCESS},
                                                {"E0", ZOX_RESULT_SIGNUP_REFUSED},
                                                {"E1", ZOX_RESULT_USERNAME_TAKEN},
                                                {"E2", ZOX_RESULT_ADDRESS_BANNED},
                                                {"E3", ZOX_RESULT_ADDRESS_IN_USE}});

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_signup_register(const char *username, const char *password, const char *email,
                                 char **message) {
  const ServiceReply reply = send_request(
      "/3.7.3/xml-signup.php", {{"mode", "signup"}, {"u", username}, {"p", password}, {"e", email}},
      {.authenticate = false});
  // The text is judged whatever became of the request: a failed one has an empty text.
  for (const Answer &answer : answers) {
    if (reply.view().starts_with(answer.word)) {
      hand_over(message, reply.notice());
      return answer.code;
    }
  }
  const char *text = reply.text ? reply.text->str : "";
  hand_over(message, OwnedText(g_strdup_printf("Onjuiste response van server :\n%s", text)));
  return ZOX_RESULT_NOT_PARSED;
}

}  // extern "C"
