/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Whether the servers answer, and whether the main one accepts the account. */
#include "velkorctl/doctor/examination.h"

namespace velkor::ctl::doctor {
namespace {

constexpr gint32 first_server_error = 500;
/** CURLE_PEER_FAILED_VERIFICATION */
constexpr gint32 not_trusted = 60;

std::string advice_for(const LibraryResult &answer) {
  if (answer.request && answer.request->transfer_result == not_trusted)
    return "check --server, --static-server, --ca-file and the clock of this machine";
  switch (answer.code) {
  case ZOX_RESULT_UNAUTHORIZED:
    return "check the account with velkorctl account set, and the clock of this machine";
  case ZOX_RESULT_BANNED:
    return "ask those who run the service";
  case ZOX_RESULT_PLUGIN_NOT_LOADED:
  case ZOX_RESULT_PLUGIN_NOT_RUN:
    return "see what is said about the plug-in";
  default:
    return "try again later; check --server and --static-server, the network and the proxy";
  }
}

/** Whoever asks for something that is not there has reached the server all the same. */
bool is_reached(const LibraryResult &answer) noexcept {
  return !answer.request ||
         (answer.request->transfer_result == 0 && answer.request->http_status != 0 &&
          answer.request->http_status < first_server_error);
}

Finding check(const char *subject, const LibraryResult &answer, bool well) {
  if (well)
    return {subject, "the server answers"};
  return {subject, answer.message(), advice_for(answer)};
}

}  // namespace

Findings check_servers(const Answers &answers) {
  const bool well = answers.with_account ? !answers.main.failed() : is_reached(answers.main);
  return {check("main server", answers.main, well),
          check("dump server", answers.dumps, is_reached(answers.dumps))};
}

}  // namespace velkor::ctl::doctor
