/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/consent.h"

#include <unistd.h>

#include "velkorctl/failure.h"
#include "velkorctl/terminal.h"

namespace velkor::ctl {

Option yes_option() {
  return {"-y,--yes", "", "Do it without asking, even if it cannot be undone"};
}

void require_consent(const Arguments &arguments, const std::string &consequence) {
  if (arguments.has("--yes"))
    return;
  if (isatty(STDIN_FILENO) == 0)
    throw usage_error(consequence + "; nothing has been changed (use --yes to do it all the same)");
  if (!confirm(consequence + "; go on?"))
    throw Failure(Exit::failed, "nothing has been changed");
}

}  // namespace velkor::ctl
