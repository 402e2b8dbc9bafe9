/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How the command ends: its exit codes, and the exception that carries one to `main`. */
#ifndef VELKORCTL_FAILURE_H
#define VELKORCTL_FAILURE_H

#include <stdexcept>
#include <string>

#include <velkor/zox_types.h>

#include "support/owned.h"

namespace velkor::ctl {

/** The exit codes; man/velkorctl.1 documents them. */
enum class Exit : int {
  ok = 0,
  failed = 1,
  usage = 2,
  account = 3,
  busy = 4,
  nothing_new = 5,
  files = 6,
  not_found = 7,
  interrupted = 130,
  broken_pipe = 141,
};

/** Ends the command with a message on standard error (none when it is empty) and an exit code. */
class Failure : public std::runtime_error {
public:
  Failure(Exit exit, const std::string &message) : std::runtime_error(message), exit_(exit) {}
  [[nodiscard]] Exit exit() const noexcept { return exit_; }

private:
  Exit exit_;
};

[[nodiscard]] inline Failure usage_error(const std::string &message) {
  return {Exit::usage, message};
}

/** The system's words for an error number. */
std::string system_error(int number);

/** The sentence for a result of the library, without a line end. */
std::string sentence_of(ZoxErrorCode code, const char *server_text);

/** The exit code that a failed result of the library ends the command with. */
Exit exit_of(ZoxErrorCode code) noexcept;

/** Throws the Failure that belongs to `code`, unless it is 0. */
void require_success(ZoxErrorCode code, const OwnedText &server_text);

}  // namespace velkor::ctl

#endif
