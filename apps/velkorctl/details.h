/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One posting with its details and reactions: fetching and printing them. */
#ifndef VELKORCTL_DETAILS_H
#define VELKORCTL_DETAILS_H

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

void print_details(const ZoxEvent &posting, Output &out);
void print_reactions(const ZoxEvent &posting, Output &out);

/** Adds the members for the fields that only the server has to the object begun in `json`. */
void add_details(Json &json, const ZoxEvent &posting);
/** Adds the member "reactions", null when they were not fetched. */
void add_reactions(Json &json, const ZoxEvent &posting);

}  // namespace velkor::ctl

#endif
