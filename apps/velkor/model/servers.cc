/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/servers.h"

#include <algorithm>
#include <limits>
#include <memory>

#include <glib.h>

#include "model/shown_text.h"
#include "support/numbers.h"
#include "support/owned.h"

namespace velkor::app {
namespace {

using OwnedKeyFile = std::unique_ptr<GKeyFile, ReleaseWith<g_key_file_unref>>;

constexpr const char *group = "Servers";
constexpr const char *main_key = "main";
constexpr const char *dumps_key = "dumps";

bool is_host_byte(char byte) noexcept {
  return g_ascii_isalnum(byte) != FALSE || byte == '.' || byte == '-' || byte == '_';
}

bool is_port(std::string_view text) noexcept {
  const auto number = whole_number(text);
  return number && *number > 0 && *number <= std::numeric_limits<std::uint16_t>::max() &&
         text.front() != '0';
}

/** "[::1]:8080" has colons in its host. */
std::size_t end_of_host(std::string_view text) noexcept {
  if (!text.starts_with('['))
    return std::min(text.find(':'), text.size());
  const std::size_t bracket = text.find(']');
  return bracket == std::string_view::npos ? 0 : bracket + 1;
}

bool is_host(std::string_view text) noexcept {
  if (text.starts_with('['))
    return text.size() > 2 &&
           text.find_first_not_of("0123456789abcdefABCDEF:.", 1) == text.size() - 1;
  return !text.empty() && std::ranges::all_of(text, is_host_byte);
}

std::string read_server(GKeyFile *file, const char *key) {
  const OwnedText text(g_key_file_get_string(file, group, key, nullptr));
  return text && is_server(text.get()) ? text.get() : "";
}

}  // namespace

bool is_server(std::string_view text) noexcept {
  constexpr std::string_view secure = "https://";
  if (text.empty())
    return true;
  if (text.starts_with(secure))
    text.remove_prefix(secure.size());
  const std::size_t end = end_of_host(text);
  const std::string_view rest = text.substr(end);
  return is_host(text.substr(0, end)) &&
         (rest.empty() || (rest.front() == ':' && is_port(rest.substr(1))));
}

Servers read_servers(const std::filesystem::path &file) {
  const OwnedKeyFile keys(g_key_file_new());
  if (g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, nullptr) == FALSE)
    return {};
  return {read_server(keys.get(), main_key), read_server(keys.get(), dumps_key)};
}

std::string write_servers(const std::filesystem::path &file, const Servers &servers) {
  const OwnedKeyFile keys(g_key_file_new());
  g_key_file_set_string(keys.get(), group, main_key, servers.main.c_str());
  g_key_file_set_string(keys.get(), group, dumps_key, servers.dumps.c_str());
  g_mkdir_with_parents(file.parent_path().c_str(), 0700);
  GError *error = nullptr;
  g_key_file_save_to_file(keys.get(), file.c_str(), &error);
  const OwnedError failure(error);
  return failure ? shown_line(failure->message) : "";
}

}  // namespace velkor::app
