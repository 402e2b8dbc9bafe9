/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/fuzz/postings.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <velkor/velkor.h>

#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"
#include "tests/fuzz/session.h"

namespace velkor::fuzz {
namespace {

constexpr std::array text_members{
    &ZoxEvent::title, &ZoxEvent::poster, &ZoxEvent::link, &ZoxEvent::tag, &ZoxEvent::fName,
    &ZoxEvent::ann,   &ZoxEvent::des,    &ZoxEvent::sig,  &ZoxEvent::img, &ZoxEvent::reason,
};
constexpr std::array list_members{&ZoxEvent::groups, &ZoxEvent::tags, &ZoxEvent::mp3Tracks};

/** An empty text stands for none. */
GString *take_text(Input &input) {
  const std::string text = xml::storable(input.view());
  return text.empty() ? nullptr : g_string_new(text.c_str());
}

GSList *take_list(Input &input) {
  return zox_splitted_list_split(xml::storable(input.view()).c_str());
}

gint32 take_number(Input &input) {
  return static_cast<gint32>(input.number());
}

ZoxForum *take_forum(Input &input) {
  const unsigned count = input.below(4);
  if (count == 0)
    return nullptr;
  ZoxForum *forum = zox_events_forum_new();
  for (unsigned number = 0; number < count; ++number) {
    ZoxReactie *reaction = zox_events_forum_reactie_new();
    reaction->messId = input.byte();
    reaction->author = take_text(input);
    reaction->body = take_text(input);
    reaction->avatar = take_text(input);
    reaction->stamp = take_number(input);
    reaction->edit = take_number(input);
    forum->reactions = g_slist_append(forum->reactions, reaction);
  }
  return forum;
}

gint add_copy(gpointer /*key*/, ZoxEvent *posting, gpointer postings) {
  auto &into = *static_cast<Postings *>(postings);
  require(into.emplace(posting->postId, zox_event_duplicate(posting)).second,
          "a posting is in the list once");
  return 0;
}

/** The texts of a posting and how much they hold. */
struct Texts {
  std::size_t size = 0;
  bool ends_section = false;
  bool has_long_avatar = false;

  void add(const GString *text) noexcept {
    size += view_of(text).size();
    ends_section = ends_section || view_of(text).find("]]>") != std::string_view::npos;
  }
  /** The length of an avatar does not count for the length of its line. */
  void add(const ZoxReactie &reaction) noexcept {
    constexpr std::size_t line_holds = 40;
    for (const GString *text : {reaction.author, reaction.body, reaction.avatar})
      add(text);
    has_long_avatar = has_long_avatar || view_of(reaction.avatar).size() > line_holds;
  }
};

}  // namespace

OwnedEvent take_posting(Input &input) {
  constexpr gint32 most_states = 10;
  OwnedEvent posting(zox_event_new());
  posting->postId = static_cast<gint32>(1 + input.byte());
  posting->status = static_cast<gint32>(input.below(most_states)) - 6;
  posting->cat = static_cast<gint32>(input.below(6)) - 1;
  posting->sCat = static_cast<gint32>(input.byte()) - 1;
  posting->locked = input.flag() ? 1 : 0;
  for (gint64 ZoxEvent::*member : {&ZoxEvent::stamp, &ZoxEvent::updated})
    (*posting).*member = take_number(input);
  for (gint32 ZoxEvent::*member : {&ZoxEvent::rating, &ZoxEvent::files, &ZoxEvent::kudos})
    (*posting).*member = take_number(input);
  for (GString *ZoxEvent::*member : text_members)
    (*posting).*member = take_text(input);
  for (GSList *ZoxEvent::*member : list_members)
    (*posting).*member = take_list(input);
  posting->forum = take_forum(input);
  return posting;
}

bool same_posting(const ZoxEvent &left, const ZoxEvent &right) noexcept {
  return left.postId == right.postId && left.stamp == right.stamp &&
         left.updated == right.updated && left.status == right.status &&
         same_text(left.fName, right.fName) && same_text(left.title, right.title) &&
         same_texts(left.groups, right.groups) && same_text(left.poster, right.poster) &&
         same_text(left.link, right.link) && left.cat == right.cat && left.sCat == right.sCat &&
         same_texts(left.tags, right.tags) && same_text(left.tag, right.tag) &&
         left.rating == right.rating && same_text(left.ann, right.ann) &&
         same_text(left.des, right.des) && same_text(left.sig, right.sig) &&
         left.fType == right.fType && left.files == right.files && left.fStart == right.fStart &&
         same_text(left.img, right.img) && same_texts(left.mp3Tracks, right.mp3Tracks);
}

bool prints_whole(const ZoxEvent &posting) {
  // Link and tags appear twice, the link once more with a prefix; names of tags and markup are far
  // shorter than the rest of the line.
  constexpr std::size_t safe_size = 10'000;
  Texts texts;
  for (GString *ZoxEvent::*member : text_members)
    texts.add(posting.*member);
  for (GSList *ZoxEvent::*member : list_members)
    for (const GString *item : Items<GString>(posting.*member))
      texts.add(item);
  if (posting.forum != nullptr)
    for (const ZoxReactie *reaction : Items<ZoxReactie>(posting.forum->reactions))
      texts.add(*reaction);
  constexpr guint most_items = 100;
  return texts.size < safe_size && !texts.ends_section && !texts.has_long_avatar &&
         g_slist_length(posting.tags) < most_items;
}

void empty_list() {
  zox_eventlist_destroy(std::exchange(core->eventlist, zox_eventlist_new()));
}

void fill_list(Input &input) {
  empty_list();
  while (!input.empty())
    zox_eventlist_add_or_replace_event(core->eventlist, take_posting(input).get());
}

void apply_view(Input &input) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->perCategory = input.flag() ? 1 : 0;
  filter->sortMode = static_cast<gint32>(input.below(5));
  filter->sortAscending = input.flag() ? 1 : 0;
  zox_eventlist_apply_filter(core->eventlist, filter.get());
}

Postings listed_postings() {
  Postings postings;
  zox_eventlist_foreach(core->eventlist, 0, 1, add_copy, &postings);
  return postings;
}

bool same_postings(const Postings &left, const Postings &right) {
  return std::ranges::equal(left, right, [](const auto &one, const auto &other) {
    return same_posting(*one.second, *other.second);
  });
}

}  // namespace velkor::fuzz
