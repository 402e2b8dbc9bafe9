/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/unit/posting/event_samples.h"

#include <velkor/zox_events_forum.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "support/text.h"

namespace velkor::test {
namespace {

std::string value(gint64 number) {
  return std::to_string(number);
}

std::string value(const GString *text) {
  return text == nullptr ? "none" : "[" + std::string(view_of(text)) + "]";
}

std::string value(const GSList *list) {
  std::string items;
  for (const GString *item : Items<const GString>(list))
    items += value(item);
  return items.empty() ? "none" : items;
}

std::string value(const ZoxForum *forum) {
  if (forum == nullptr)
    return "none";
  std::string text = "stamp " + value(forum->stamp);
  for (const ZoxReactie *reaction : Items<const ZoxReactie>(forum->reactions)) {
    text += "\n  reaction " + value(reaction->messId) + " " + value(reaction->author) + " " +
            value(reaction->body) + " " + value(reaction->avatar) + " " + value(reaction->stamp) +
            " " + value(reaction->edit) + " " + value(reaction->kudos) + " " +
            value(reaction->reply);
  }
  return text;
}

template <typename T>
std::string line(const char *name, T member) {
  return std::string(name) + "=" + value(member) + "\n";
}

ZoxReactie *reaction(guint32 messId, const char *author, const char *body) {
  ZoxReactie *reaction = zox_events_forum_reactie_new();
  reaction->messId = messId;
  reaction->author = zox_string_new(author);
  reaction->body = zox_string_new(body);
  reaction->stamp = 1300000500;
  reaction->edit = 1300000600;
  reaction->kudos = 12;
  reaction->reply = 3;
  reaction->avatar = zox_string_new("http://avatar.example/1.png");
  return reaction;
}

ZoxForum *forum() {
  ZoxForum *forum = zox_events_forum_new();
  forum->stamp = 1300000700;
  forum->reactions = g_slist_append(forum->reactions, reaction(41, "jan", "Bedankt!"));
  forum->reactions = g_slist_append(forum->reactions, reaction(42, "piet", nullptr));
  return forum;
}

}  // namespace

OwnedEvent basic_event(gint32 postId, std::string_view title) {
  OwnedEvent event(zox_event_new());
  event->postId = postId;
  event->stamp = 1300000000;
  event->updated = 1300000100;
  event->status = 1;
  event->title = zox(title).release();
  event->groups = zox_splitted_list_split("|12|40|");
  event->poster = zox_string_new("plaatser");
  event->cat = 0;
  event->sCat = 3;
  event->tags = zox_splitted_list_split("|a3|b1|");
  event->rating = 80;
  return event;
}

OwnedEvent full_event(gint32 postId) {
  OwnedEvent event = basic_event(postId, "Een titel");
  event->fName = zox_string_new("een.bestand");
  event->link = zox_string_new("http://link.example/");
  event->tag = zox_string_new("vrije tekst");
  event->ann = zox_string_new("aankondiging");
  event->des = zox_string_new("beschrijving");
  event->sig = zox_string_new("");
  event->fType = 2;
  event->files = 33;
  event->fStart = 4;
  event->img = zox_string_new("http://beeld.example/1.jpg");
  event->forum = forum();
  event->parType = 5;
  event->pars = 6;
  event->blockSize = 384000;
  event->view = 1234;
  event->kudos = 56;
  event->mp3Tracks = g_slist_append(event->mp3Tracks, zox_string_new("eerste nummer"));
  event->mp3Tracks = g_slist_append(event->mp3Tracks, zox_string_new(""));
  event->locked = 1;
  event->reason = zox_string_new("dubbel");
  event->watchlistUpdated = 1;
  event->watcherHit = 1;
  return event;
}

std::string describe_basic(const ZoxEvent &event) {
  return line("postId", event.postId) + line("stamp", event.stamp) +
         line("updated", event.updated) + line("status", event.status) +
         line("fName", event.fName) + line("title", event.title) + line("groups", event.groups) +
         line("poster", event.poster) + line("link", event.link) + line("cat", event.cat) +
         line("sCat", event.sCat) + line("tags", event.tags) + line("tag", event.tag) +
         line("rating", event.rating);
}

std::string describe(const ZoxEvent &event) {
  return describe_basic(event) + line("ann", event.ann) + line("des", event.des) +
         line("sig", event.sig) + line("fType", event.fType) + line("files", event.files) +
         line("fStart", event.fStart) + line("img", event.img) + line("forum", event.forum) +
         line("parType", event.parType) + line("pars", event.pars) +
         line("blockSize", event.blockSize) + line("view", event.view) +
         line("kudos", event.kudos) + line("mp3Tracks", event.mp3Tracks) +
         line("locked", event.locked) + line("reason", event.reason) +
         line("watchlistUpdated", event.watchlistUpdated) + line("watcherHit", event.watcherHit);
}

std::string event_element(std::string_view children) {
  return "<Event Code=\"1\">" + std::string(children) + "</Event>";
}

std::string posting_element(gint32 postId, std::string_view more) {
  return event_element("<PostID>" + std::to_string(postId) +
                       "</PostID><Stamp>1300000000</Stamp><Updated>1300000100</Updated>"
                       "<Status>1</Status><Groups><![CDATA[|12|40|]]></Groups>"
                       "<Title><![CDATA[Een titel]]></Title>"
                       "<Poster><![CDATA[plaatser]]></Poster><Rating>80</Rating><Cat>0</Cat>"
                       "<SCat>3</SCat><Tags><![CDATA[|a3|b1|]]></Tags>" +
                       std::string(more));
}

std::string document_of(const std::vector<std::string> &elements) {
  std::string text = "<?xml version=\"1.0\"?>\n<Events>\n";
  for (const std::string &element : elements)
    text += "  " + element + "\n";
  return text + "</Events>\n";
}

OwnedString zox(std::string_view text) {
  return OwnedString(g_string_new_len(text.data(), static_cast<gssize>(text.size())));
}

}  // namespace velkor::test
