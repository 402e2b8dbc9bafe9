/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/messages.h"

#include <cstdarg>
#include <string>

#include <glib.h>
#include <libxml/xmlerror.h>
#include <unistd.h>

#include "support/owned.h"
#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

/** Removes a progress bar that may be on the line. */
constexpr const char *clear_line = "\r\033[K";

void trim_end(std::string &text) {
  text.erase(text.find_last_not_of(" \n\r\t") + 1);
}

void log_message(const gchar * /*domain*/, GLogLevelFlags level, const gchar *message,
                 gpointer /*unused*/) noexcept {
  if ((level & (G_LOG_LEVEL_DEBUG | G_LOG_LEVEL_INFO | G_LOG_LEVEL_MESSAGE)) != 0)
    return;
  std::string text = message == nullptr ? "" : message;
  trim_end(text);
  say("warning: " + text);
}

/** libxml2 reports an error in several pieces; complete lines are printed. */
// NOLINTNEXTLINE(cert-dcl50-cpp): libxml2 prescribes the type of the handler
[[gnu::format(printf, 2, 3)]] void xml_message(void * /*context*/, const char *format,
                                               ...) noexcept {
  static std::string pending;
  va_list arguments;
  va_start(arguments, format);
  pending += OwnedText(g_strdup_vprintf(format, arguments)).get();
  va_end(arguments);
  if (pending.empty() || pending.back() != '\n')
    return;
  trim_end(pending);
  say("XML: " + pending);
  pending.clear();
}

}  // namespace

void say(std::string_view text) {
  static const bool on_terminal = isatty(STDERR_FILENO) != 0;
  const std::string line =
      (on_terminal ? clear_line : "") + ("velkorctl: " + safe_text(text)) + "\n";
  const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
  static_cast<void>(written);  // there is nowhere else to report it
}

void install_log_handlers() noexcept {
  g_log_set_default_handler(log_message, nullptr);
  xmlSetGenericErrorFunc(nullptr, xml_message);
}

QuietLog::QuietLog() noexcept
    : earlier_(g_log_set_default_handler(
          [](const gchar *, GLogLevelFlags, const gchar *, gpointer) noexcept {}, nullptr)) {}

QuietLog::~QuietLog() {
  g_log_set_default_handler(earlier_, nullptr);
}

}  // namespace velkor::ctl
