/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Creating an account. */
#include <velkor/zox_signup.h>

#include <array>

#include "services/service_request.h"

namespace velkor {
namespace {

struct Answer {
  std::string_view word;
  ZoxErrorCode code;
};

constexpr auto answers =
    std::to_array<Answer>({{"OK", 0}, {"E0", 20}, {"E1", 21}, {"E2", 22}, {"E3", 23}});

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
  return result::not_parsed;
}

}  // extern "C"
