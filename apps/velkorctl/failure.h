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

/** The system's message for an error number. */
std::string system_error(int number);

/** The sentence for a result of the library, without a line feed. */
std::string sentence_of(ZoxErrorCode code, const char *server_text);

/** The exit code for a result of the library. */
Exit exit_of(ZoxErrorCode code) noexcept;

/** Throws a Failure when SIGINT, SIGTERM or SIGHUP has arrived. */
void throw_if_interrupted();

/** Throws the Failure with the sentence and the exit code for `code`, unless it is 0. */
void require_success(ZoxErrorCode code, const char *server_text = nullptr);

/** What an operation of the library returned. */
struct LibraryResult {
  ZoxErrorCode code;
  /** The server's text, or null. */
  OwnedText server_text;
};

inline void require_success(const LibraryResult &result) {
  require_success(result.code, result.server_text.get());
}

/** Calls an operation of the library; its last parameter, for the server's text, is added here. */
template <typename Operation, typename... Arguments>
LibraryResult try_call(Operation operation, const Arguments &...arguments) {
  char *server_text = nullptr;
  const ZoxErrorCode code = operation(arguments..., &server_text);
  return {code, OwnedText(server_text)};
}

/** As try_call(), but throws a Failure when the operation fails. */
template <typename Operation, typename... Arguments>
void call(Operation operation, const Arguments &...arguments) {
  require_success(try_call(operation, arguments...));
}

}  // namespace velkor::ctl

#endif
