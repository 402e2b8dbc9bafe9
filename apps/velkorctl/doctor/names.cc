/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Whether the names of the servers have addresses. */
#include "velkorctl/doctor/examination.h"

namespace velkor::ctl::doctor {
namespace {

/** CURLE_COULDNT_RESOLVE_HOST */
constexpr gint32 no_address = 6;

}  // namespace

Findings check_names(const Answers &answers) {
  Findings findings;
  for (const LibraryResult *answer : {&answers.main, &answers.dumps})
    if (answer->request && answer->request->transfer_result == no_address)
      findings.push_back({"names", "the name " + answer->request->host + " has no address",
                          "check the connection to the network, and --server and --static-server "
                          "or the variables of the environment that name the servers"});
  if (findings.empty())
    findings.push_back({"names", "none of the servers' names failed to resolve"});
  return findings;
}

}  // namespace velkor::ctl::doctor
