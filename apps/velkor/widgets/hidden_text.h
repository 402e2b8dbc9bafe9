/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Why a spot is not in the list, in words. */
#ifndef VELKOR_APP_WIDGETS_HIDDEN_TEXT_H
#define VELKOR_APP_WIDGETS_HIDDEN_TEXT_H

#include <glibmm/ustring.h>

#include "model/snapshot.h"
#include "model/spot_query.h"

namespace velkor::app {

/** Empty when the spot is in the list. */
Glib::ustring words_for_hidden(const Snapshot &snapshot, const SpotQuery &query, std::int32_t id);

}  // namespace velkor::app

#endif
