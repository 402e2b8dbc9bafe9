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
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

/** The library saves the list with every posting fetched: keep it small. */
void keep_only(const OwnedEvent &posting) {
  zox_eventlist_destroy(std::exchange(core->eventlist, zox_eventlist_new()));
  if (posting)
    zox_eventlist_add_or_replace_event(core->eventlist, posting.get());
}

std::string number_or_empty(gint64 number) {
  return number == 0 ? "" : std::to_string(number);
}

std::string moment_or_empty(gint64 seconds) {
  return seconds <= 0 ? "" : show_moment(seconds);
}

/** A long text below its title, with its lines kept. */
void print_text(const char *title, const GString *text, Output &out) {
  if (text != nullptr && text->len > 0)
    out.write(std::string("\n") + title + ":\n" + safe_text(view_of(text), Lines::keep) + "\n");
}

void print_reaction(const ZoxReactie &reaction, Output &out) {
  std::string head = "\n#" + std::to_string(reaction.messId) + "  " +
                     safe_text(view_of(reaction.author)) + "  " + moment_or_empty(reaction.stamp);
  if (reaction.edit > 0)
    head += "  (edited " + show_moment(reaction.edit) + ")";
  if (reaction.reply != 0)
    head += "  (answers #" + std::to_string(reaction.reply) + ")";
  if (reaction.kudos != 0)
    head += "  (kudos " + std::to_string(reaction.kudos) + ")";
  out.write(head + "\n" + safe_text(view_of(reaction.body), Lines::keep) + "\n");
}

void add_reaction(Json &json, const ZoxReactie &reaction) {
  json.begin_object().member("id", reaction.messId).member("author", reaction.author);
  json.member("stamp", reaction.stamp).member("date", moment_or_empty(reaction.stamp));
  json.member("edited", reaction.edit).member("kudos", reaction.kudos);
  json.member("answers", reaction.reply).member("avatar", reaction.avatar);
  json.member("body", reaction.body).end_object();
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

void print_details(const ZoxEvent &posting, Output &out) {
  Table table({{""}, {""}});
  const auto add = [&table](const char *title, const std::string &value) {
    if (!value.empty())
      table.add({title, value});
  };
  if (posting.postId > 0)
    add("ID", std::to_string(posting.postId));
  add("Title", std::string(view_of(posting.title)));
  add("Poster", std::string(view_of(posting.poster)));
  add("Date", moment_or_empty(posting.stamp));
  add("Updated", moment_or_empty(posting.updated));
  add("Status", status_name(posting));
  add("Reason", std::string(view_of(posting.reason)));
  add("Category", category_name(posting));
  add("Tags", joined(tag_names(posting.cat, posting.tags)));
  add("Free tag", std::string(view_of(posting.tag)));
  add("Newsgroups", joined(newsgroup_names(posting.groups)));
  add("File name", std::string(view_of(posting.fName)));
  add("Files", number_or_empty(posting.files));
  add("Par files", number_or_empty(posting.pars));
  add("Link", std::string(view_of(posting.link)));
  add("Image", std::string(view_of(posting.img)));
  add("Rating", number_or_empty(posting.rating));
  add("Kudos", number_or_empty(posting.kudos));
  add("Views", number_or_empty(posting.view));
  for (const GString *track : Items<GString>(posting.mp3Tracks))
    add("Track", std::string(view_of(track)));
  out.write(table.text(0, false));
  print_text("Announcement", posting.ann, out);
  print_text("Description", posting.des, out);
  print_text("Signature", posting.sig, out);
}

void print_reactions(const ZoxEvent &posting, Output &out) {
  if (posting.forum == nullptr)
    return;
  const Items<ZoxReactie> reactions(posting.forum->reactions);
  for (const ZoxReactie *reaction : reactions)
    print_reaction(*reaction, out);
  if (posting.locked != 0)
    out.write("\n(closed for reactions)\n");
}

void add_details(Json &json, const ZoxEvent &posting) {
  json.member("announcement", posting.ann).member("description", posting.des);
  json.member("signature", posting.sig).member("image", posting.img);
  json.member("fileType", posting.fType).member("files", posting.files);
  json.member("fileStart", posting.fStart).member("parFiles", posting.pars);
  json.member("parType", posting.parType).member("blockSize", posting.blockSize);
  json.member("kudos", posting.kudos).member("views", posting.view);
  json.member("locked", posting.locked != 0).member("reason", posting.reason);
  json.begin_array("tracks");
  for (const GString *track : Items<GString>(posting.mp3Tracks))
    json.value(view_of(track));
  json.end_array();
}

void add_reactions(Json &json, const ZoxEvent &posting) {
  if (posting.forum == nullptr) {
    json.null_member("reactions");
    return;
  }
  json.begin_array("reactions");
  for (const ZoxReactie *reaction : Items<ZoxReactie>(posting.forum->reactions))
    add_reaction(json, *reaction);
  json.end_array();
}

}  // namespace velkor::ctl
