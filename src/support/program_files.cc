/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/program_files.h"

#include <system_error>

namespace velkor {

namespace fs = std::filesystem;

std::optional<std::string> directory_from_program(const fs::path &path) {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error)
    return std::nullopt;
  const fs::path directory = (program.parent_path() / path).lexically_normal();
  return fs::is_directory(directory, error) ? std::optional(directory.string()) : std::nullopt;
}

}  // namespace velkor
