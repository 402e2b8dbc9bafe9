/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the command asks of a terminal: its width, and a line typed without echo. */
#ifndef VELKORCTL_TERMINAL_H
#define VELKORCTL_TERMINAL_H

#include <string>

namespace velkor::ctl {

/** The cells of a line when `descriptor` is a terminal, else 0. */
int terminal_width(int descriptor) noexcept;

/**
 * One line of standard input without its line end; a terminal is asked with `prompt` and does not
 * show what is typed. Throws a Failure when nothing can be read.
 */
std::string read_secret(const std::string &prompt);

}  // namespace velkor::ctl

#endif
