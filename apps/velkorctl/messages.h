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
 * Takes over what GLib and libxml2 log, which is for developers: it is dropped, or printed with
 * say() while tracing. Warnings about something that was kept, left out or not saved are for the
 * user and always printed, without the name of a function.
 */
void install_log_handlers() noexcept;

/** Whether everything that is logged is printed; off at first. */
void set_tracing(bool on) noexcept;

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
