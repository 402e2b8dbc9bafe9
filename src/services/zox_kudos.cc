/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Giving kudos to a posting and asking for a posting's kudos. */
#include <velkor/zox_kudos.h>

#include <cstring>

#include "http/service_request.h"
#include "services/answers.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr const char *kudos_path = "/3.7.3/xml-kudos.php";

ServiceReply give(gint32 postId, gint32 kudos) noexcept {
  return send_request(
      kudos_path,
      {{"mode", "give"}, {"id", decimal(postId).c_str()}, {"kudos", decimal(kudos).c_str()}});
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_kudos_give(gint32 postId, gint32 kudos, char **message) {
  const ServiceReply reply = give(postId, kudos);
  return reply.failed() ? report_failure(reply, message) : 0;
}

ZoxErrorCode zox_kudos_give_answered(gint32 postId, gint32 kudos, ZoxAnswer *answer,
                                     char **message) {
  const ServiceReply reply = give(postId, kudos);
  *answer = reply.failed() ? ZOX_ANSWER_NONE : answer_of(reply.view());
  return report_failure(reply, message);
}

ZoxErrorCode zox_kudos_get(gint32 postId, gint32 *first, gint32 *second, char **message) {
  const ServiceReply reply =
      send_request(kudos_path, {{"mode", "get"}, {"id", decimal(postId).c_str()}});
  if (reply.failed())
    return report_failure(reply, message);
  const char *star = std::strchr(reply.text->str, '*');
  if (star == nullptr) {
    hand_over(message, nullptr);
    return ZOX_RESULT_NOT_PARSED;
  }
  *first = leading_integer(reply.text->str);
  *second = leading_integer(star + 1);
  return 0;
}

}  // extern "C"
