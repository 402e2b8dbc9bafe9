/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reads a new posting from a key file. */
#ifndef VELKORCTL_SPOT_FILE_H
#define VELKORCTL_SPOT_FILE_H

#include <string>

#include "velkorctl/postings.h"

namespace velkor::ctl {

/**
 * Reads the group "posting" of the file and checks it against categories, tags and newsgroups,
 * which must be loaded. Reports everything that is wrong, then throws a usage Failure.
 */
OwnedEvent read_spot(const std::string &file);

}  // namespace velkor::ctl

#endif
