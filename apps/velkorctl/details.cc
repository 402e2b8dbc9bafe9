/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/details.h"

#include <string>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_forum.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/failure.h"
#include "velkorctl/moment.h"
#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

/** The library saves the list with every posting fetched: keep it small. */
void keep_only(const OwnedEvent &posting) {
  zox_eventlist_destroy(std::exchange(core->eventlist, zox_eventlist_new()));
  if (posting)
    zox_eventlist_add_or_replace_event(core->eventlist, posting.get());
}

void print_reaction(const ZoxReactie &reaction, Output &out) {
  std::string head = "\n#" + std::to_string(reaction.messId) + "  " +
                     safe_text(view_of(reaction.author)) + "  " +
                     text_for_people(moment_or_nothing(reaction.stamp));
  if (reaction.edit > 0)
    head += "  (edited " + show_moment(reaction.edit) + ")";
  if (reaction.reply != 0)
    head += "  (answers #" + std::to_string(reaction.reply) + ")";
  if (reaction.kudos != 0)
    head += "  (kudos " + std::to_string(reaction.kudos) + ")";
  out.write(head + "\n" + safe_text(view_of(reaction.body), Lines::keep) + "\n");
}

Value tracks_of(const ZoxEvent &posting) {
  Value::List tracks;
  for (const GString *track : Items<GString>(posting.mp3Tracks))
    tracks.emplace_back(track);
  return tracks;
}

/** Nothing when the reactions were not fetched. */
Value reactions_value(const ZoxEvent &posting) {
  if (posting.forum == nullptr)
    return {};
  Value::List reactions;
  for (const ZoxReactie *reaction : reactions_of(posting))
    reactions.push_back(
        object_value(reaction_fields(), *reaction, "#" + std::to_string(reaction->messId)));
  return reactions;
}

Fields<ZoxEvent> server_fields() {
  using P = const ZoxEvent &;
  return {
      {{.name = "reason", .type = type::text()}, [](P posting) -> Value { return posting.reason; }},
      {{.name = "fileType", .type = type::number(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.fType; }},
      {{.name = "files", .type = type::number(), .place = Place::line_unless_zero},
       [](P posting) -> Value { return posting.files; }},
      {{.name = "fileStart", .type = type::number(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.fStart; }},
      {{.name = "parFiles", .type = type::number(), .place = Place::line_unless_zero},
       [](P posting) -> Value { return posting.pars; }},
      {{.name = "parType", .type = type::number(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.parType; }},
      {{.name = "blockSize", .type = type::number(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.blockSize; }},
      {{.name = "image", .type = type::text()}, [](P posting) -> Value { return posting.img; }},
      {{.name = "kudos", .type = type::number(), .place = Place::line_unless_zero},
       [](P posting) -> Value { return posting.kudos; }},
      {{.name = "views", .type = type::number(), .place = Place::line_unless_zero},
       [](P posting) -> Value { return posting.view; }},
      {{.name = "locked", .type = type::flag(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.locked != 0; }},
      {{.name = "tracks", .type = type::list_of(type::text())}, tracks_of},
      {{.name = "announcement", .type = type::text(), .place = Place::below},
       [](P posting) -> Value { return posting.ann; }},
      {{.name = "description", .type = type::text(), .place = Place::below},
       [](P posting) -> Value { return posting.des; }},
      {{.name = "signature", .type = type::text(), .place = Place::below},
       [](P posting) -> Value { return posting.sig; }},
      {{.name = "reactions",
        .type = type::list_of(object_type(reaction_fields())),
        .place = Place::nowhere},
       reactions_value},
  };
}

}  // namespace

OwnedEvent fetch_posting(const CoreSession &session, gint32 id, Fetch what) {
  session.require_account();
  const OwnedEvent cached = find_posting(id);
  keep_only(cached);
  if (what == Fetch::details_and_reactions || !cached)
    call("asking for the details", zox_eventinfo_fetch, id);
  call("asking for the reactions", zox_events_forum_fetch, id, 0);
  return find_posting(id);
}

std::vector<const ZoxReactie *> reactions_of(const ZoxEvent &posting) {
  if (posting.forum == nullptr)
    return {};
  const Items<ZoxReactie> reactions(posting.forum->reactions);
  return {reactions.begin(), reactions.end()};
}

Fields<ZoxEvent> detail_fields() {
  return together(posting_fields(), server_fields());
}

Fields<ZoxReactie> reaction_fields() {
  using R = const ZoxReactie &;
  return {
      {{.name = "id", .type = type::number(), .rank = 2},
       [](R reaction) -> Value { return reaction.messId; }},
      {{.name = "date", .type = type::moment(), .rank = 3},
       [](R reaction) { return moment_or_nothing(reaction.stamp); }},
      {{.name = "edited", .type = type::moment()},
       [](R reaction) { return moment_or_nothing(reaction.edit); }},
      {{.name = "poster", .type = type::text(), .rank = 1, .flexible = true},
       [](R reaction) -> Value { return reaction.author; }},
      {{.name = "kudos", .type = type::number()},
       [](R reaction) -> Value { return reaction.kudos; }},
      {{.name = "answers", .type = type::number()},
       [](R reaction) { return unless_zero(reaction.reply); }},
      {{.name = "avatar", .type = type::text()},
       [](R reaction) -> Value { return reaction.avatar; }},
      {{.name = "body", .type = type::text(), .rank = 1, .flexible = true},
       [](R reaction) -> Value { return reaction.body; }},
  };
}

void print_reactions(const std::vector<const ZoxReactie *> &reactions, bool locked, Output &out) {
  for (const ZoxReactie *reaction : reactions)
    print_reaction(*reaction, out);
  if (locked)
    out.write("\n(closed for reactions)\n");
}

}  // namespace velkor::ctl
