/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The user's agreement to what cannot be undone. */
#ifndef VELKORCTL_CONSENT_H
#define VELKORCTL_CONSENT_H

#include <string>

#include "velkorctl/command.h"

namespace velkor::ctl {

/** --yes */
Option yes_option();

/**
 * Returns when --yes is given or a user at a terminal agrees to `consequence`, a clause such as
 * "3 postings would be dropped". Throws a Failure when the user does not, and a usage Failure when
 * there is no terminal to ask at.
 */
void require_consent(const Arguments &arguments, const std::string &consequence);

}  // namespace velkor::ctl

#endif
