/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How the command ends: its exit codes, and the exception that carries one to `main`. */
#ifndef VELKORCTL_FAILURE_H
#define VELKORCTL_FAILURE_H

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include <velkor/zox_types.h>

#include "support/owned.h"
#include "velkorctl/request_watch.h"

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
  command_failed = 8,
  interrupted = 130,
  broken_pipe = 141,
};

/** Ends the command with a message on standard error (none when it is empty) and an exit code. */
class Failure : public std::runtime_error {
public:
  /** What is known when an operation of the library has failed. */
  struct Cause {
    std::optional<ZoxErrorCode> library_code;
    std::string operation;
    std::string host;
  };

  Failure(Exit exit, const std::string &message, Cause cause = {})
      : std::runtime_error(message), exit_(exit), cause_(std::move(cause)) {}
  [[nodiscard]] Exit exit() const noexcept { return exit_; }
  [[nodiscard]] const Cause &cause() const noexcept { return cause_; }

private:
  Exit exit_;
  Cause cause_;
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

/** What came of an operation of the library. */
struct LibraryResult {
  /** What was done, such as "giving kudos". */
  std::string operation;
  ZoxErrorCode code;
  /** The server's text, or null. */
  OwnedText server_text;
  /** The last request of the operation, if it failed. */
  std::optional<RequestFailure> request;

  /** Whether it failed; an HTTP status of 400 or above counts, whatever the library made of it. */
  [[nodiscard]] bool failed() const noexcept;
  /** The sentence for a failure, then the operation, the host and the reason. */
  [[nodiscard]] std::string message() const;
  [[nodiscard]] Failure failure() const;
};

/** Throws the Failure unless the operation succeeded. */
void require_success(const LibraryResult &result);

/**
 * Calls an operation of the library; its last parameter, for the server's text, is added here.
 * `name` says what is done.
 */
template <typename Operation, typename... Arguments>
LibraryResult try_call(std::string name, Operation operation, const Arguments &...arguments) {
  const RequestWatch watch;
  char *server_text = nullptr;
  const ZoxErrorCode code = operation(arguments..., &server_text);
  return {std::move(name), code, OwnedText(server_text), watch.failure()};
}

/** As try_call(), but throws a Failure when the operation fails. */
template <typename Operation, typename... Arguments>
void call(std::string name, Operation operation, const Arguments &...arguments) {
  require_success(try_call(std::move(name), operation, arguments...));
}

}  // namespace velkor::ctl

#endif
