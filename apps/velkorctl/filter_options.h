/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The options that select postings, and the filter that they make. */
#ifndef VELKORCTL_FILTER_OPTIONS_H
#define VELKORCTL_FILTER_OPTIONS_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <velkor/zox_filter.h>

#include "support/owned_records.h"
#include "velkorctl/command.h"

namespace velkor::ctl {

/** --category, --sub-category, --tag and --free-tag: what a saved filter can hold. */
std::vector<Option> saved_filter_options();

/**
 * Sets what those of them that are given say; an empty value removes a condition. Another category
 * takes the sub-category and the tags with it, whose numbers and codes mean something else there.
 */
void set_saved_conditions(ZoxFilter &filter, const Arguments &arguments);

/** --filter, --category, --title and so on, to which a command adds its own. */
std::vector<Option> filter_options();

/**
 * The filter that the options make, starting from the saved filter when --filter names one. Needs
 * the core with its settings, filters, categories, tags and newsgroups. `now`: seconds since 1970.
 */
OwnedFilter filter_of(const Arguments &arguments, std::int64_t now);

/**
 * The place, counted from 0, of the saved filter with that name or number ("#3", from 1). Throws a
 * Failure with `unless_found` when there is none.
 */
std::size_t saved_filter_place(const std::string &name, const std::optional<std::string> &category,
                               Exit unless_found);

/** A copy of the saved filter with that name or number; none is a usage error. */
OwnedFilter saved_filter(const std::string &name, const std::optional<std::string> &category);

}  // namespace velkor::ctl

#endif
