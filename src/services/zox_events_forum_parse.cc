/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reader of the "Forum" document. */
#include <velkor/zox_events_forum.h>

#include <array>
#include <string>
#include <unordered_map>

#include <velkor/zox_app_core.h>
#include <velkor/zox_xml_parse.h>

#include "core/record_fields.h"
#include "core/reply_document.h"
#include "posting/event_record.h"
#include "services/forum_fields.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr DocumentRule forum_rule{.root = "Forum", .reader = "zox_events_forum_parse"};

constexpr auto reactie_fields = std::to_array<Field<ZoxReactie>>({
    {"MessID", &ZoxReactie::messId},
    {"Author", &ZoxReactie::author},
    {"Body", &ZoxReactie::body},
    {"Stamp", &ZoxReactie::stamp},
    {"Edit", &ZoxReactie::edit},
    {"Reply", &ZoxReactie::reply},
    {"Avatar", &ZoxReactie::avatar},
});
constexpr auto forum_fields = std::to_array<Field<ZoxForum>>({{"Stamp", &ZoxForum::stamp}});

/** What a kudos element says: the kudos of one user, who is null when it names none. */
struct UserKudos {
  UserKudos(xmlDoc *doc, xmlNode *first) noexcept;
  ~UserKudos() { release_value(user); }
  UserKudos(const UserKudos &) = delete;
  UserKudos &operator=(const UserKudos &) = delete;

  GString *user = nullptr;
  guint32 kudos = 0;
};
constexpr auto kudos_fields =
    std::to_array<Field<UserKudos>>({{"User", &UserKudos::user}, {"Kudos", &UserKudos::kudos}});

UserKudos::UserKudos(xmlDoc *doc, xmlNode *first) noexcept {
  read_fields<UserKudos>(doc, first, kudos_fields, *this, xml::is_named_exactly);
}

OwnedReactie read_reactie(xmlDoc *doc, xmlNode *first, bool dropWithdrawn) noexcept {
  OwnedReactie reactie(zox_events_forum_reactie_new());
  read_fields<ZoxReactie>(doc, first, reactie_fields, *reactie);
  return dropWithdrawn && reactie->edit < 0 ? nullptr : std::move(reactie);
}

/** Reads the elements of one document into an event's empty forum. */
class ForumReader {
public:
  ForumReader(xmlDoc *doc, ZoxEvent &event) noexcept : doc_(doc), event_(event) {}

  void read(xmlNode *node) noexcept;
  /** Gives the event what was collected, after the last element. */
  void finish() noexcept;

private:
  /** A user's latest kudos and how many reactions stood before them. */
  struct Total {
    guint32 kudos;
    std::size_t reactions_before;
  };

  void read_reaction(xmlNode *first, bool dropWithdrawn) noexcept;
  void note_kudos(xmlNode *first) noexcept;

  xmlDoc *doc_;
  ZoxEvent &event_;
  ListBuilder<ZoxReactie, zox_events_forum_reactie_free> reactions_;
  std::size_t count_ = 0;
  std::unordered_map<std::string, Total> totals_;
};

void ForumReader::read(xmlNode *node) noexcept {
  if (xmlHasProp(node, xml::chars("Code")) == nullptr) {
    g_warning("zox_events_forum_parse(): Event zonder Code overgeslagen\n");
    return;
  }
  switch (zox_xml_parse_int_attr(doc_, node, "Code")) {
  case 0:
  case 4:
    zox_events_forum_parse_data(doc_, node->children, &event_);
    break;
  case 1:
    read_reaction(node->children, false);
    break;
  case 2:
    read_reaction(node->children, true);
    break;
  case 3:
    note_kudos(node->children);
    break;
  default:
    break;
  }
}

void ForumReader::read_reaction(xmlNode *first, bool dropWithdrawn) noexcept {
  if (OwnedReactie reactie = read_reactie(doc_, first, dropWithdrawn)) {
    reactions_.append(reactie.release());
    ++count_;
  }
}

void ForumReader::note_kudos(xmlNode *first) noexcept {
  const UserKudos reported(doc_, first);
  if (reported.user != nullptr)
    totals_.insert_or_assign(std::string(view_of(reported.user)), Total{reported.kudos, count_});
}

void ForumReader::finish() noexcept {
  // The latest kudos of a user hold for the reactions before them; so one walk does for all.
  std::size_t place = 0;
  for (ZoxReactie *reactie : Items<ZoxReactie>(reactions_.list())) {
    ++place;
    if (reactie->author == nullptr)
      continue;
    const auto total = totals_.find(std::string(view_of(reactie->author)));
    if (total != totals_.end() && place <= total->second.reactions_before)
      reactie->kudos = total->second.kudos;
  }
  event_.forum->reactions = reactions_.release();
}

void replace_forum(ZoxEvent &event) noexcept {
  if (event.forum != nullptr)
    zox_events_forum_free(event.forum);
  event.forum = zox_events_forum_new();
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_events_forum_parse_forum(xmlDocPtr doc, xmlNodePtr firstChild, ZoxEvent *event,
                                  gint32 dropWithdrawn) {
  ZOX_ASSERT(event->forum);
  if (OwnedReactie reactie = read_reactie(doc, firstChild, dropWithdrawn != 0))
    event->forum->reactions = g_slist_append(event->forum->reactions, reactie.release());
}

void zox_events_forum_parse_data(xmlDocPtr doc, xmlNodePtr firstChild, ZoxEvent *event) {
  ZOX_ASSERT(event->forum);
  read_fields<ZoxEvent>(doc, firstChild, live_fields, *event, xml::is_named_exactly);
  read_fields<ZoxForum>(doc, firstChild, forum_fields, *event->forum, xml::is_named_exactly);
}

void zox_events_forum_parse_kudos(xmlDocPtr doc, xmlNodePtr firstChild, ZoxEvent *event) {
  ZOX_ASSERT(event->forum);
  const UserKudos reported(doc, firstChild);
  if (reported.user == nullptr)
    return;
  for (ZoxReactie *reactie : Items<ZoxReactie>(event->forum->reactions)) {
    if (reactie->author != nullptr && view_of(reactie->author) == view_of(reported.user))
      reactie->kudos = reported.kudos;
  }
}

gint32 zox_events_forum_parse(const ZoxString *buffer, ZoxEvent *event) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(buffer);
  replace_forum(*event);
  const ReplyDocument document(buffer, forum_rule);
  if (document.fault() != DocumentFault::none)
    return static_cast<gint32>(document.fault());
  ForumReader reader(document.get(), *event);
  for (xmlNode *node : document.children()) {
    if (xml::is_named(node, "Event"))
      reader.read(node);
  }
  reader.finish();
  return 0;
}

}  // extern "C"
