/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/installation.h"

#include "support/program_files.h"

namespace velkor::ctl {

std::optional<std::string> installed_plugin_directory() {
  return directory_from_program(VELKOR_PLUGINS_FROM_PROGRAMS);
}

std::optional<std::string> installed_data_directory() {
  return directory_from_program(VELKOR_DATA_FROM_PROGRAMS);
}

}  // namespace velkor::ctl
