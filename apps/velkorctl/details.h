/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One posting with its details and its reactions: fetched, and shown. */
#ifndef VELKORCTL_DETAILS_H
#define VELKORCTL_DETAILS_H

#include "velkorctl/core_session.h"
#include "velkorctl/output.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {

enum class Fetch { details_and_reactions, reactions };

/**
 * Asks the server about a posting. Only that posting is left in the list of the session, which
 * must be a reading one, since the library saves the list with every posting that it fetches.
 * Throws a Failure when the server has nothing on it.
 */
OwnedEvent fetch_posting(const CoreSession &session, gint32 id, Fetch what);

void print_details(const ZoxEvent &posting, Output &out);
void print_reactions(const ZoxEvent &posting, Output &out);

/** Adds the members that only the details have to the object begun in `json`. */
void add_details(Json &json, const ZoxEvent &posting);
/** Adds the member "reactions", null when they were not fetched. */
void add_reactions(Json &json, const ZoxEvent &posting);

}  // namespace velkor::ctl

#endif
