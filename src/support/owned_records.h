/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owners for the records of the C interface, for programs and the higher layers of the library. */
#ifndef VELKOR_SUPPORT_OWNED_RECORDS_H
#define VELKOR_SUPPORT_OWNED_RECORDS_H

#include <memory>

#include <velkor/zox_event.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_profile.h>

#include "support/owned.h"

namespace velkor {

using OwnedEvent = std::unique_ptr<ZoxEvent, ReleaseWith<zox_event_free>>;
using OwnedReactie = std::unique_ptr<ZoxReactie, ReleaseWith<zox_events_forum_reactie_free>>;
using OwnedFilter = std::unique_ptr<ZoxFilter, ReleaseWith<zox_filter_free_filter>>;
using OwnedBericht = std::unique_ptr<ZoxBericht, ReleaseWith<zox_mail_bericht_free>>;
using OwnedProfile = std::unique_ptr<ZoxProfile, ReleaseWith<zox_profile_free>>;

}  // namespace velkor

#endif
