/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/installation.h"

#include <filesystem>
#include <system_error>

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

/** The directory with that path from the program's own; nothing when there is none. */
std::optional<std::string> directory_from_program(const fs::path &path) {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error)
    return std::nullopt;
  const fs::path directory = (program.parent_path() / path).lexically_normal();
  return fs::is_directory(directory, error) ? std::optional(directory.string()) : std::nullopt;
}

}  // namespace

std::optional<std::string> installed_plugin_directory() {
  return directory_from_program(VELKOR_PLUGINS_FROM_PROGRAMS);
}

std::optional<std::string> installed_data_directory() {
  return directory_from_program(VELKOR_DATA_FROM_PROGRAMS);
}

}  // namespace velkor::ctl
