/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The options that select postings, and the filter that they make. */
#ifndef VELKORCTL_FILTER_OPTIONS_H
#define VELKORCTL_FILTER_OPTIONS_H

#include <memory>
#include <vector>

#include <velkor/zox_filter.h>

#include "support/owned_records.h"
#include "velkorctl/command.h"

namespace velkor::ctl {

/** --filter, --category, --title and so on, to which a command adds its own. */
std::vector<Option> filter_options();

/**
 * The filter that the options make, starting from the saved filter when --filter names one. Needs
 * the core with its settings, filters, categories, tags and newsgroups. `now`: seconds since 1970.
 */
OwnedFilter filter_of(const Arguments &arguments, std::int64_t now);

/** A copy of the saved filter with that name, or with that number ("#3", counted from 1). */
OwnedFilter saved_filter(const std::string &name, const std::optional<std::string> &category);

}  // namespace velkor::ctl

#endif
