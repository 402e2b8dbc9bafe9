/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Why the server did not take what the user gave it, in words. */
#ifndef VELKOR_APP_WIDGETS_ANSWER_TEXT_H
#define VELKOR_APP_WIDGETS_ANSWER_TEXT_H

#include <glibmm/ustring.h>

#include "model/server_answer.h"

namespace velkor::app {

/** Empty when the server took it. */
Glib::ustring words_for_refusal(const ActionOutcome &outcome);

}  // namespace velkor::app

#endif
