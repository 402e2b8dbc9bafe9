/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Passwords come from a terminal without echo or, when asked for, from standard input. */
#ifndef VELKORCTL_PASSWORDS_H
#define VELKORCTL_PASSWORDS_H

#include <string>

#include "velkorctl/command.h"

namespace velkor::ctl {

/** --password-stdin */
Option password_option();

/** Throws a usage Failure when there is no terminal and the option is not given, or no password. */
std::string read_password(const Arguments &arguments);

}  // namespace velkor::ctl

#endif
