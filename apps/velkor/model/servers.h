/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The servers that the user has chosen, which this program keeps in a file of its own. */
#ifndef VELKOR_APP_MODEL_SERVERS_H
#define VELKOR_APP_MODEL_SERVERS_H

#include <filesystem>
#include <string>
#include <string_view>

namespace velkor::app {

/** Each is "[https://]HOST[:PORT]"; an empty one stands for the server of the service. */
struct Servers {
  std::string main{};
  std::string dumps{};

  bool operator==(const Servers &) const = default;
};

/** Whether the text names a server, or is empty. */
bool is_server(std::string_view text) noexcept;

/** What the file holds; what is missing or names no server is empty. */
Servers read_servers(const std::filesystem::path &file);

/**
 * Writes the file and its directory.
 * @return why it could not be written; empty on success
 */
std::string write_servers(const std::filesystem::path &file, const Servers &servers);

}  // namespace velkor::app

#endif
