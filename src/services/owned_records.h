/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owners for the records that the services hand around. */
#ifndef VELKOR_SERVICES_OWNED_RECORDS_H
#define VELKOR_SERVICES_OWNED_RECORDS_H

#include <velkor/zox_event.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_profile.h>

#include "support/owned.h"

namespace velkor {

using OwnedEvent = std::unique_ptr<ZoxEvent, ReleaseWith<zox_event_free>>;
using OwnedReactie = std::unique_ptr<ZoxReactie, ReleaseWith<zox_events_forum_reactie_free>>;
using OwnedProfile = std::unique_ptr<ZoxProfile, ReleaseWith<zox_profile_free>>;

}  // namespace velkor

#endif
