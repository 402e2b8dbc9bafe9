/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Messages on standard error: the command's own and those that libraries log. */
#ifndef VELKORCTL_MESSAGES_H
#define VELKORCTL_MESSAGES_H

#include <string_view>

#include <glib.h>

namespace velkor::ctl {

/** One line on standard error: "velkorctl: " and the text, made safe for a terminal. */
void say(std::string_view text);

/**
 * Prints what GLib and libxml2 log with say(), so that no text from a server or a file reaches
 * the terminal unchecked.
 */
void install_log_handlers() noexcept;

/** Drops what GLib logs while it lives. */
class QuietLog {
public:
  QuietLog() noexcept;
  ~QuietLog();
  QuietLog(const QuietLog &) = delete;
  QuietLog &operator=(const QuietLog &) = delete;

private:
  GLogFunc earlier_;
};

}  // namespace velkor::ctl

#endif
