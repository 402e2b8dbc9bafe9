/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** JSON schemas of what the commands print, made of their tables of fields. */
#ifndef VELKORCTL_SCHEMA_H
#define VELKORCTL_SCHEMA_H

#include <map>
#include <string>
#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

/** A schema for each command with records and each kind of message, by the names of their files. */
std::map<std::string, std::string> all_schemas(const std::vector<CommandGroup> &groups);

}  // namespace velkor::ctl

#endif
