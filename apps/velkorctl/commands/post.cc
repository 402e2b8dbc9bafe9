/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl post: a new spot. */
#include <array>
#include <string>

#include <velkor/zox_post.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/details.h"
#include "velkorctl/messages.h"
#include "velkorctl/spot_file.h"

namespace velkor::ctl {
namespace {

/** What is reported about each step, by its number; nothing for most. */
constexpr std::array<const char *, 17> step_messages{
    nullptr,
    nullptr,
    "sending the posting",
    nullptr,
    "the server has accepted the posting",
    "sending its description",
    nullptr,
    nullptr,
    "sending its signature",
    nullptr,
    nullptr,
    "sending its tracks",
    nullptr,
    nullptr,
    nullptr,
    "finished",
    nullptr,
};

gint report_step(gint32 step) noexcept {
  const auto place = static_cast<std::size_t>(step);
  if (place < step_messages.size() && step_messages[place] != nullptr)
    say(step_messages[place]);
  return 0;
}

/** When a later part fails, the server keeps the posting without it. */
void require_whole(ZoxErrorCode result, const ZoxEvent &spot) {
  if (result == ZOX_RESULT_SUCCESS || result == ZOX_RESULT_SPOT_RESERVED)
    return;
  std::string message = sentence_of(result, "");
  if (spot.postId > 0)
    message += "; posting " + std::to_string(spot.postId) + " is on the server without the rest";
  throw Failure(exit_of(result), message);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  const OwnedEvent spot = read_spot(context.arguments.required("FILE"));
  if (context.arguments.has("--dry-run")) {
    print_details(*spot, context.out);
    return Exit::ok;
  }
  session.require_account();
  const ZoxErrorCode result = zox_post_send(spot.get(), report_step);
  require_whole(result, *spot);
  if (result == ZOX_RESULT_SPOT_RESERVED)
    say(sentence_of(result, nullptr));
  context.out.write(std::to_string(spot->postId) + "\n");
  return Exit::ok;
}

}  // namespace

Command post_command() {
  return {"post",
          "Place a new spot and print its ID",
          {{"FILE", "The key file that describes the posting"}},
          {{"--dry-run", "", "Check the file and print what would be sent"}},
          run};
}

}  // namespace velkor::ctl
