/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Messages on standard error: the command's own and those that libraries log. */
#ifndef VELKORCTL_MESSAGES_H
#define VELKORCTL_MESSAGES_H

#include <string>
#include <string_view>
#include <vector>

#include <glib.h>

#include "velkorctl/record.h"

namespace velkor::ctl {

class Failure;

/**
 * One line on standard error: "velkorctl: " and the text, made safe for a terminal, or a JSON
 * object with it. A warning and a trace line are marked as such.
 */
void say(std::string_view text);
void warn(std::string_view text);
void trace(std::string_view text);
/** The message of a failure, if it has one; as JSON with its codes, operation and host. */
void report(const Failure &failure);

/** A kind of message as JSON: "error", and what its objects have after schema and version. */
struct MessageKind {
  std::string name;
  std::vector<FieldInfo> fields;
};
std::vector<MessageKind> message_kinds();

/** Whether messages are JSON objects; off at first. */
void set_json_messages(bool enabled) noexcept;

/**
 * Takes over what GLib and libxml2 log, which is for developers: it is dropped, or printed with
 * trace() while tracing. Warnings about something that was kept, left out or not saved are for the
 * user and always printed, without the name of a function.
 */
void install_log_handlers() noexcept;

/** Whether everything that is logged is printed; off at first. */
void set_tracing(bool enabled) noexcept;

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
