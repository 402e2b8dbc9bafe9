/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The width of a terminal, a line typed without echo, and a question answered. */
#ifndef VELKORCTL_TERMINAL_H
#define VELKORCTL_TERMINAL_H

#include <string>

namespace velkor::ctl {

/** The columns of the terminal, or 0 when `descriptor` is no terminal. */
int terminal_width(int descriptor) noexcept;

/** Whether TERM names a terminal that takes escape sequences. */
bool terminal_is_capable() noexcept;

/**
 * One line of standard input without its line feed. A terminal shows `prompt` and not what is
 * typed. Throws a Failure when nothing can be read.
 */
std::string read_secret(const std::string &prompt);

/** Asks a question at the terminal; anything but "y" or "yes" is a no. */
bool confirm(const std::string &question);

}  // namespace velkor::ctl

#endif
