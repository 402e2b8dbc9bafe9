/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The setting that decides when an update removes a posting. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_AGE_LIMIT_H
#define VELKOR_APP_LIBRARY_AGE_LIMIT_H

#include <cstdint>
#include <optional>

namespace velkor::app {

/** The age in days up to which postings are kept; nothing when the setting holds none. */
std::optional<std::int32_t> age_limit_days();

}  // namespace velkor::app

#endif
