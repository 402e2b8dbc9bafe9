/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The commands that add to, remove from and print a setting that is a list. */
#ifndef VELKORCTL_SETTING_LISTS_H
#define VELKORCTL_SETTING_LISTS_H

#include "velkorctl/command.h"

namespace velkor::ctl {

/** Adds the texts of the argument "TEXT" that are not there yet. */
Exit add_to_setting(const Context &context, const char *key);
/** Removes them; throws a Failure when one is not there. */
Exit remove_from_setting(const Context &context, const char *key);
/** Prints the items one a line, or as a JSON array. */
Exit print_setting(const Context &context, const char *key);

}  // namespace velkor::ctl

#endif
