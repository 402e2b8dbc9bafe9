/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl completion: the script that completes command lines. */
#include "velkorctl/completion.h"

#include "velkorctl/commands.h"

namespace velkor::ctl {
namespace {

Exit run(const Context &context) {
  context.out.write(bash_completion(all_commands()));
  return Exit::ok;
}

}  // namespace

Command completion_command() {
  return {"completion", "Print the script that completes command lines in bash", {}, {}, run};
}

}  // namespace velkor::ctl
