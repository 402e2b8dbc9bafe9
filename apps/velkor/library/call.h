/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How a call of the library ended, in words for the user. */
#ifndef VELKOR_APP_LIBRARY_CALL_H
#define VELKOR_APP_LIBRARY_CALL_H

#include <string>

#include <velkor/zox_types.h>

namespace velkor::app {

struct CallResult {
  ZoxErrorCode code = 0;
  std::string message{};  // the library's sentence, or the server's notice; empty on success

  [[nodiscard]] bool failed() const noexcept { return code != 0; }
};

/** The sentence for `code`, with why the latest request of this thread failed. */
CallResult call_result(ZoxErrorCode code, const char *server_text);

}  // namespace velkor::app

#endif
