/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/answer_text.h"

#include "widgets/translation.h"

namespace velkor::app {

Glib::ustring words_for_refusal(const ActionOutcome &outcome) {
  switch (outcome.answer) {
  case ServerAnswer::taken:
    return "";
  case ServerAnswer::duplicate:
    return _("The server already has this from you.");
  case ServerAnswer::locked:
    return _("This spot is closed for reactions.");
  case ServerAnswer::not_found:
    return _("The server does not know this spot any more.");
  case ServerAnswer::refused:
    return _("The server refused this without telling why.");
  case ServerAnswer::unknown:
    return _("The server answered something that Velkor does not understand.");
  case ServerAnswer::failed:
    break;
  }
  return outcome.failure;
}

}  // namespace velkor::app
