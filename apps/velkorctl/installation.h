/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What was installed together with the running program, found from where the program is. */
#ifndef VELKORCTL_INSTALLATION_H
#define VELKORCTL_INSTALLATION_H

#include <optional>
#include <string>

namespace velkor::ctl {

/** The directory of the authentication plug-in; nothing when the program is not installed. */
std::optional<std::string> installed_plugin_directory();

/** The directory of the data; nothing when the program is not installed. */
std::optional<std::string> installed_data_directory();

}  // namespace velkor::ctl

#endif
