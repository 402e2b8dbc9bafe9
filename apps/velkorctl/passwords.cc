/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/passwords.h"

#include <unistd.h>

#include "velkorctl/terminal.h"

namespace velkor::ctl {

Option password_option() {
  return {"--password-stdin", "", "Read the password from standard input instead of the terminal"};
}

std::string read_password(const Arguments &arguments) {
  if (!arguments.has("--password-stdin") && isatty(STDIN_FILENO) == 0)
    throw usage_error("there is no terminal to ask for the password; see --password-stdin");
  std::string password = read_secret("password: ");
  if (password.empty())
    throw usage_error("the password is empty");
  return password;
}

}  // namespace velkor::ctl
