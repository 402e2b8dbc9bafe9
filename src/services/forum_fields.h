/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a forum reply may hold of the posting itself. */
#ifndef VELKOR_SERVICES_FORUM_FIELDS_H
#define VELKOR_SERVICES_FORUM_FIELDS_H

#include <array>

#include <velkor/zox_event.h>

#include "core/record_fields.h"

namespace velkor {

inline constexpr auto live_fields = std::to_array<Field<ZoxEvent>>({
    {"Kudos", &ZoxEvent::kudos},
    {"Pars", &ZoxEvent::pars},
    {"ParType", &ZoxEvent::parType},
    {"BlockSize", &ZoxEvent::blockSize},
    {"Status", &ZoxEvent::status},
    {"View", &ZoxEvent::view},
    {"Locked", &ZoxEvent::locked},
    {"Reason", &ZoxEvent::reason},
});

}  // namespace velkor

#endif
