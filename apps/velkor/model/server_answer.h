/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How the server took what the user gave it: kudos, a reaction, a warning. */
#ifndef VELKOR_APP_MODEL_SERVER_ANSWER_H
#define VELKOR_APP_MODEL_SERVER_ANSWER_H

#include <string>

namespace velkor::app {

enum class ServerAnswer {
  taken,
  duplicate,  // it was given before
  locked,     // the posting is closed
  not_found,  // there is no such posting
  refused,    // for a reason that the server does not tell
  unknown,    // it answered something else
  failed,     // no answer came
};

struct ActionOutcome {
  ServerAnswer answer = ServerAnswer::failed;
  std::string failure{};  // why no answer came, or what the library says about it

  [[nodiscard]] bool taken() const noexcept { return answer == ServerAnswer::taken; }
};

}  // namespace velkor::app

#endif
