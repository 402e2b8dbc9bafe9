/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The "UserInfo" document: one user's profile. */
#ifndef VELKOR_SERVICES_PROFILE_DOCUMENT_H
#define VELKOR_SERVICES_PROFILE_DOCUMENT_H

#include <memory>

#include <velkor/zox_profile.h>

#include "support/owned_records.h"

namespace velkor {

/** The profile of a reply; null when it holds none. */
OwnedProfile parse_profile(const ZoxString *text) noexcept;

}  // namespace velkor

#endif
