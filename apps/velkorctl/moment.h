/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Points in time as people type and read them. */
#ifndef VELKORCTL_MOMENT_H
#define VELKORCTL_MOMENT_H

#include <cstdint>
#include <optional>
#include <string>

namespace velkor::ctl {

/** Which second of the day a date without a time means. */
enum class DayEdge { first_second, last_second };

/**
 * Seconds since 1970 of "2026-01-31", "2026-01-31 18:30", "2026-01-31T18:30:15" (local time),
 * "today", "yesterday", "90m", "12h", "3d" or "2w" (that long before `now`) or "@SECONDS"; nullopt
 * for anything else.
 */
std::optional<std::int64_t> parse_moment(const std::string &text, std::int64_t now, DayEdge edge);

/** Local time as "2026-01-31 18:30"; empty for a time without such a form. */
std::string show_moment(std::int64_t seconds);

/** Local time in ISO 8601, "2026-01-31T18:30:15+01:00"; empty for a time without such a form. */
std::string iso_moment(std::int64_t seconds);

}  // namespace velkor::ctl

#endif
