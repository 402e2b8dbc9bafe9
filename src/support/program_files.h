/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The files that are installed beside a program. */
#ifndef VELKOR_SUPPORT_PROGRAM_FILES_H
#define VELKOR_SUPPORT_PROGRAM_FILES_H

#include <filesystem>
#include <optional>
#include <string>

namespace velkor {

/** The directory with that path from the running program's own; nothing when there is none. */
std::optional<std::string> directory_from_program(const std::filesystem::path &path);

}  // namespace velkor

#endif
