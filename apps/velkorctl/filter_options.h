/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The options that choose postings, and the filter that they stand for. */
#ifndef VELKORCTL_FILTER_OPTIONS_H
#define VELKORCTL_FILTER_OPTIONS_H

#include <memory>
#include <vector>

#include <velkor/zox_filter.h>

#include "support/owned.h"
#include "velkorctl/command.h"

namespace velkor::ctl {

using OwnedFilter = std::unique_ptr<ZoxFilter, ReleaseWith<zox_filter_free_filter>>;

/** --filter, --category, --title and so on; a command appends its own. */
std::vector<Option> filter_options();

/**
 * The filter of the options given, starting from the saved one when one is named. Needs the core
 * with its settings, filters, categories, tags and newsgroups. `now`: seconds since 1970.
 */
OwnedFilter filter_of(const Arguments &arguments, std::int64_t now);

/** A copy of the saved filter of that name, or of that number in the list from 1 on. */
OwnedFilter saved_filter(const std::string &name, const std::optional<std::string> &category);

}  // namespace velkor::ctl

#endif
