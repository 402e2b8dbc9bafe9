/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/hidden_text.h"

#include "widgets/translation.h"

namespace velkor::app {
namespace {

Glib::ustring words_for(Condition condition) {
  switch (condition) {
  case Condition::none:
    return "";
  case Condition::entry:
    return _("Not in the list: it does not belong to the chosen category or filter.");
  case Condition::search:
    return _("Not in the list: its title does not hold the text that is searched for.");
  case Condition::period:
    return _("Not in the list: it is older than the chosen period.");
  case Condition::marks:
  case Condition::status:
  case Condition::ids:
    return _("Not in the list: it is not in the chosen state.");
  case Condition::poster:
    return _("Not in the list: it is not by the chosen poster.");
  case Condition::tag:
    return _("Not in the list: it does not have the chosen tag.");
  case Condition::newsgroup:
    return _("Not in the list: it is not in the chosen newsgroup.");
  }
  return "";
}

}  // namespace

Glib::ustring words_for_hidden(const Snapshot &snapshot, const SpotQuery &query, std::int32_t id) {
  const std::optional<Row> row = snapshot.table.find(id);
  return row ? words_for(unmet_condition(snapshot, query, *row))
             : Glib::ustring(_("Not in the list: it is not among the spots that were fetched."));
}

}  // namespace velkor::app
