/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One posting with its details and reactions: fetching and printing them. */
#ifndef VELKORCTL_DETAILS_H
#define VELKORCTL_DETAILS_H

#include <vector>

#include "velkorctl/core_session.h"
#include "velkorctl/output.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {

enum class Fetch { details_and_reactions, reactions };

/**
 * Fetches a posting from the server. Only that posting stays in the list of the session. The
 * session must only read, since the library saves the list with every posting that it fetches.
 * Throws a Failure when the server does not have the posting.
 */
OwnedEvent fetch_posting(const CoreSession &session, gint32 id, Fetch what);

/** The reactions, none when they were not fetched. They stay the posting's. */
std::vector<const ZoxReactie *> reactions_of(const ZoxEvent &posting);

/** The fields of posting_fields() and those that only the server has. */
Fields<ZoxEvent> detail_fields();
Fields<ZoxReactie> reaction_fields();

/** Prints reactions with their texts, for people. */
void print_reactions(const std::vector<const ZoxReactie *> &reactions, bool locked, Output &out);

}  // namespace velkor::ctl

#endif
