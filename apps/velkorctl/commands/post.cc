/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl post: a new spot. */
#include <array>
#include <optional>
#include <string>
#include <utility>

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

/** The first of the requests that failed although the library took its reply. */
class StepWatch {
public:
  StepWatch() { current_ = this; }
  ~StepWatch() { current_ = nullptr; }
  StepWatch(const StepWatch &) = delete;
  StepWatch &operator=(const StepWatch &) = delete;

  [[nodiscard]] const std::optional<RequestFailure> &refusal() const noexcept { return refusal_; }

  /** Called with every step, which tells nobody but the process. */
  static void look() {
    if (current_->refusal_)
      return;
    std::optional<RequestFailure> latest = current_->watch_.failure();
    if (latest && latest->refused())
      current_->refusal_ = std::move(latest);
  }

private:
  static inline StepWatch *current_ = nullptr;
  RequestWatch watch_;
  std::optional<RequestFailure> refusal_;
};

gint report_step(gint32 step) noexcept {
  StepWatch::look();
  const auto place = static_cast<std::size_t>(step);
  if (place < step_messages.size() && step_messages[place] != nullptr)
    say(step_messages[place]);
  return 0;
}

/** When a later part fails, the server keeps the posting without it. */
void require_whole(const LibraryResult &result, const ZoxEvent &spot) {
  if (!result.failed())
    return;
  std::string message = result.message();
  if (spot.postId > 0)
    message += "; posting " + std::to_string(spot.postId) + " is on the server without the rest";
  throw Failure(result.failure().exit(), message, result.failure().cause());
}

/** Whether the server took the posting with a reservation. */
bool send(ZoxEvent &spot) {
  const StepWatch steps;
  LibraryResult result = try_call("sending the posting", [&spot](char ** /*server_text*/) {
    return zox_post_send(&spot, report_step);
  });
  if (steps.refusal())
    result.request = steps.refusal();
  const bool reserved = result.code == ZOX_RESULT_SPOT_RESERVED;
  if (reserved)
    result.code = ZOX_RESULT_SUCCESS;
  require_whole(result, spot);
  return reserved;
}

/** A new spot has no ID until the server has accepted it. */
Fields<ZoxEvent> fields() {
  Fields<ZoxEvent> fields = detail_fields();
  fields.front().value = [](const ZoxEvent &spot) {
    return spot.postId > 0 ? Value(spot.postId) : Value();
  };
  return fields;
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  const OwnedEvent spot = read_spot(context.arguments.required("FILE"));
  if (context.arguments.has("--dry-run")) {
    print_record(context, fields(), *spot);
    return Exit::ok;
  }
  session.require_account();
  const std::string reservation = send(*spot) ? sentence_of(ZOX_RESULT_SPOT_RESERVED, nullptr) : "";
  if (!reservation.empty())
    say(reservation);
  if (wants_records(context.arguments))
    print_record(context, fields(), *spot, {.message = reservation});
  else
    context.out.write(std::to_string(spot->postId) + "\n");
  return Exit::ok;
}

}  // namespace

Command post_command() {
  return with_output({"post",
                      "Place a new spot and print its ID",
                      {{"FILE", "The key file that describes the posting"}},
                      {{"--dry-run", "", "Check the file and print what would be sent"}},
                      run},
                     one_record(fields()));
}

}  // namespace velkor::ctl
