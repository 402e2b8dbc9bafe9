/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Warning the moderators about a posting or about one reaction under it. */
#include <velkor/zox_modje.h>

#include <velkor/zox_app_core.h>

#include "http/service_request.h"
#include "support/assertion.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr std::string_view accepted = "OK";

/** Only the word of success may be followed by something: the number of the warning. */
ZoxErrorCode judge(std::string_view reply, gint32 forumId) noexcept {
  if (reply == "FAIL")
    return ZOX_RESULT_DATABASE_DOWN;
  if (reply.starts_with(accepted))
    return ZOX_RESULT_SUCCESS;
  if (reply == "DUPE")
    return forumId < 1 ? ZOX_RESULT_POSTING_WARNED : ZOX_RESULT_REACTION_WARNED;
  return ZOX_RESULT_UNKNOWN_REPLY;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_modje_send(gint32 postId, gint32 forumId, const char *reason, gint32 *number,
                            char **message) {
  ZOX_ASSERT(core);
  ZOX_ASSERT_AS(postId > 0, "post_id > 0");
  const ServiceReply reply = send_request(
      "/3.7.3/xml-warn.php",
      {{"id", decimal(postId).c_str()}, {"forumid", decimal(forumId).c_str()}, {"reason", reason}});
  if (reply.failed())
    return report_failure(reply, message);
  const ZoxErrorCode code = judge(reply.view(), forumId);
  if (code != ZOX_RESULT_SUCCESS)
    hand_over(message, nullptr);
  else if (number != nullptr)
    *number = leading_integer(reply.text->str + accepted.size());
  return code;
}

}  // extern "C"
