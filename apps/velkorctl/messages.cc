/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/messages.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdarg>
#include <string>
#include <utility>

#include <glib.h>
#include <libxml/xmlerror.h>
#include <unistd.h>

#include "support/owned.h"
#include "velkorctl/failure.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/value.h"

namespace velkor::ctl {
namespace {

/** Removes a progress bar that may be on the line. */
constexpr const char *clear_line = "\r\033[K";

std::atomic<bool> json_messages = false;

void print_line(const std::string &text) {
  static const bool on_terminal = isatty(STDERR_FILENO) != 0;
  const std::string line = (on_terminal ? clear_line : "") + text + "\n";
  const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
  static_cast<void>(written);  // there is nowhere else to report it
}

/** An object begun with the schema of such messages. */
Json json_message(const std::string &kind) {
  Json json;
  json.begin_object().member("schema", "velkorctl." + kind).member("version", format_version);
  return json;
}

void print(const char *kind, const char *mark, std::string_view text) {
  if (json_messages)
    print_line(json_message(kind).member("message", text).end_object().compact());
  else
    print_line(safe_text("velkorctl: " + (mark + std::string(text))));
}

void trim_end(std::string &text) {
  text.erase(text.find_last_not_of(" \n\r\t") + 1);
}

std::atomic<bool> tracing = false;

/** Warnings of the library with one of these tell of something kept, left out or not saved. */
constexpr auto matters_to_the_user = std::to_array<std::string_view>({
    "alleen de eerste",
    "antwoord van de server",
    "blijft bewaard",
    "cannot load configfile",
    "cannot write",
    "geen bruikbare tijd",
    "is left out",
    "is shortened",
    "kan niet geschreven worden",
    "kan nu niet worden gelezen",
    "overgeslagen",
    "passed over",
    "unknown config option",
    "valt niet op de ZOX server te vinden",
    "worden andere onbekende",
});

bool is_for_the_user(const std::string &warning) noexcept {
  return std::ranges::any_of(matters_to_the_user, [&warning](std::string_view words) {
    return warning.find(words) != std::string::npos;
  });
}

/** The text without "zox_function(): " before it. */
std::string without_function(const std::string &text) {
  constexpr std::string_view mark = "(): ";
  const std::size_t end = text.find(mark);
  return end == std::string::npos || text.find(' ') < end ? text : text.substr(end + mark.size());
}

void log_message(const gchar *domain, GLogLevelFlags level, const gchar *message,
                 gpointer /*unused*/) noexcept {
  constexpr int serious = G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING;
  std::string text = message == nullptr ? "" : message;
  trim_end(text);
  if ((level & serious) != 0 && is_for_the_user(text))
    warn(without_function(text));
  else if (tracing && ((level & serious) != 0 || g_strcmp0(domain, "velkor") == 0))
    trace(text);
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
  if (tracing)
    trace("XML: " + pending);
  pending.clear();
}

}  // namespace

void say(std::string_view text) {
  print("notice", "", text);
}

void warn(std::string_view text) {
  print("warning", "warning: ", text);
}

void trace(std::string_view text) {
  print("trace", "trace: ", text);
}

void report(const Failure &failure) {
  const std::string_view message = failure.what();
  if (message.empty())
    return;
  if (!json_messages)
    return say(message);
  const Failure::Cause &cause = failure.cause();
  Json json = json_message("error");
  json.member("code", static_cast<int>(failure.exit()));
  if (cause.library_code)
    json.member("libraryCode", *cause.library_code);
  else
    json.null_member("libraryCode");
  json.member("message", message);
  for (const auto &[name, text] :
       {std::pair("operation", &cause.operation), std::pair("host", &cause.host)})
    add_to(json, name, text_or_nothing(*text));
  print_line(json.end_object().compact());
}

std::vector<MessageKind> message_kinds() {
  const FieldInfo message{.name = "message", .type = type::text()};
  return {{"error",
           {{.name = "code", .type = type::number()},
            {.name = "libraryCode", .type = type::number()},
            message,
            {.name = "operation", .type = type::text()},
            {.name = "host", .type = type::text()}}},
          {"warning", {message}},
          {"notice", {message}},
          {"trace", {message}}};
}

void set_json_messages(bool enabled) noexcept {
  json_messages = enabled;
}

void install_log_handlers() noexcept {
  g_log_set_default_handler(log_message, nullptr);
  xmlSetGenericErrorFunc(nullptr, xml_message);
}

void set_tracing(bool enabled) noexcept {
  tracing = enabled;
}

QuietLog::QuietLog() noexcept
    : earlier_(g_log_set_default_handler(
          [](const gchar *, GLogLevelFlags, const gchar *, gpointer) noexcept {}, nullptr)) {}

QuietLog::~QuietLog() {
  g_log_set_default_handler(earlier_, nullptr);
}

}  // namespace velkor::ctl
